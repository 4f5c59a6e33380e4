// CPluginFactory: what it says about its classes, what it makes, how long it lives.
#include "public.sdk/source/main/pluginfactory.h"
#include "public.sdk/source/vst/vstaudioeffect.h"

#include <gtest/gtest.h>

#include <string>

using namespace Steinberg;

namespace {

// Made by the factory; counts itself in the context.
struct Counted : Vst::AudioEffect {
    explicit Counted(int& count) : alive(count) { ++alive; }
    ~Counted() override { --alive; }
    int& alive;
};

FUnknown* makeCounted(void* context)
{
    return static_cast<Vst::IAudioProcessor*>(new Counted(*static_cast<int*>(context)));
}

FUnknown* makeNothing(void*)
{
    return nullptr;
}

struct Factory : testing::Test {
    Factory()
    {
        FUID(0x01020304, 0x05060708, 0x090A0B0C, 0x0D0E0F10).toTUID(workingId);
        FUID(0x11121314, 0x05060708, 0x090A0B0C, 0x0D0E0F10).toTUID(emptyId);
        {
            const PClassInfo2 working(workingId, PClassInfo::kManyInstances, "Audio Module Class",
                                      "Worker", 1, "Fx|EQ", nullptr, "2.3", "VST 3.6.0");
            const PClassInfo2 empty(emptyId, 1, "Nothing", "Empty", 0, nullptr, "Them", "1", "0");
            EXPECT_TRUE(factory->registerClass(&working, makeCounted, &alive));
            EXPECT_TRUE(factory->registerClass(&empty, makeNothing));
            EXPECT_FALSE(factory->registerClass(nullptr, makeCounted));
            EXPECT_FALSE(factory->registerClass(&working, nullptr));
        }
    }
    ~Factory() override { factory->release(); }

    TUID workingId, emptyId;
    int alive = 0;
    CPluginFactory* factory =
        new CPluginFactory(PFactoryInfo("Maker", "www.maker.example", "mailto:a@b.example", 16));
};

TEST_F(Factory, RecordsOutliveTheCallersCopiesInEveryForm)
{
    ASSERT_EQ(factory->countClasses(), 2);
    PClassInfo2 record;
    ASSERT_EQ(factory->getClassInfo2(0, &record), kResultOk);
    EXPECT_EQ(std::memcmp(record.cid, workingId, sizeof(TUID)), 0);
    EXPECT_EQ(record.cardinality, 0x7FFFFFFF);
    EXPECT_STREQ(record.subCategories, "Fx|EQ");
    EXPECT_STREQ(record.vendor, "");
    EXPECT_STREQ(record.sdkVersion, "VST 3.6.0");

    PClassInfo brief;
    ASSERT_EQ(factory->getClassInfo(1, &brief), kResultOk);
    EXPECT_EQ(std::memcmp(brief.cid, emptyId, sizeof(TUID)), 0);
    EXPECT_EQ(brief.cardinality, 1);
    EXPECT_STREQ(brief.name, "Empty");

    PClassInfoW wide;
    ASSERT_EQ(factory->getClassInfoUnicode(0, &wide), kResultOk);
    EXPECT_EQ(std::memcmp(wide.cid, workingId, sizeof(TUID)), 0);
    EXPECT_EQ(wide.classFlags, 1u);
    EXPECT_EQ(std::basic_string<char16>(wide.name), STR16("Worker"));
    EXPECT_EQ(std::basic_string<char16>(wide.version), STR16("2.3"));

    for (const int32 index : {-1, 2, 1000}) {
        EXPECT_EQ(factory->getClassInfo(index, &brief), kInvalidArgument);
        EXPECT_EQ(factory->getClassInfo2(index, &record), kInvalidArgument);
        EXPECT_EQ(factory->getClassInfoUnicode(index, &wide), kInvalidArgument);
    }
    EXPECT_EQ(factory->getClassInfo2(0, nullptr), kInvalidArgument);
}

TEST_F(Factory, AFailedCreationGivesNullAndLeavesNothingBehind)
{
    TUID unknownId;
    FUID(9, 9, 9, 9).toTUID(unknownId);
    const struct {
        FIDString cid, iid;
    } failures[] = {{unknownId, Vst::IAudioProcessor::iid},
                    {emptyId, Vst::IAudioProcessor::iid},
                    {workingId, IPluginFactory::iid},
                    {nullptr, Vst::IAudioProcessor::iid}};
    for (const auto& failure : failures) {
        void* object = this;
        EXPECT_EQ(factory->createInstance(failure.cid, failure.iid, &object), kNoInterface);
        EXPECT_EQ(object, nullptr);
        EXPECT_EQ(alive, 0);
    }
}

TEST_F(Factory, ACreatedObjectBelongsToTheCallerAlone)
{
    void* object = nullptr;
    ASSERT_EQ(factory->createInstance(workingId, Vst::IComponent::iid, &object), kResultOk);
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(static_cast<Vst::IComponent*>(object)->release(), 0u);
    EXPECT_EQ(alive, 0);
}

TEST_F(Factory, EveryInterfaceIsTheSameCountedObjectAndTheGlobalOneIsForgottenWithIt)
{
    for (const FIDString iid : {FIDString(IPluginFactory::iid), FIDString(IPluginFactory2::iid),
                                FIDString(IPluginFactory3::iid), FIDString(FUnknown::iid)}) {
        void* found = nullptr;
        ASSERT_EQ(factory->queryInterface(iid, &found), kResultOk);
        EXPECT_EQ(static_cast<FUnknown*>(found)->release(), 1u);
    }
    void* none = this;
    EXPECT_EQ(factory->queryInterface(Vst::IComponent::iid, &none), kNoInterface);
    EXPECT_EQ(none, nullptr);

    auto* other = new CPluginFactory(PFactoryInfo());
    gPluginFactory = factory;
    EXPECT_EQ(other->release(), 0u);
    EXPECT_EQ(gPluginFactory, factory) << "the end of another factory cleared the library's own";
    factory->addRef();
    EXPECT_EQ(factory->release(), 1u);
    EXPECT_EQ(gPluginFactory, factory);

    auto* last = new CPluginFactory(PFactoryInfo());
    gPluginFactory = last;
    EXPECT_EQ(last->release(), 0u);
    EXPECT_EQ(gPluginFactory, nullptr);
}

}  // namespace
