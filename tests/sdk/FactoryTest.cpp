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

struct Factory : testing::Test {
    Factory()
    {
        FUID(0x01020304, 0x05060708, 0x090A0B0C, 0x0D0E0F10).toTUID(workingId);
        FUID(0x11121314, 0x05060708, 0x090A0B0C, 0x0D0E0F10).toTUID(emptyId);
        const auto makeCounted = [](void* count) -> FUnknown* {
            return static_cast<Vst::IAudioProcessor*>(new Counted(*static_cast<int*>(count)));
        };
        const PClassInfo2 working(workingId, PClassInfo::kManyInstances, "Audio Module Class",
                                  "Worker", 1, "Fx|EQ", nullptr, "2.3", "VST 3.6.0");
        const PClassInfo2 empty(emptyId, 1, "Nothing", "Empty", 0, nullptr, "Them", "1", "0");
        EXPECT_TRUE(factory->registerClass(&working, makeCounted, &alive));
        EXPECT_TRUE(factory->registerClass(&empty, [](void*) -> FUnknown* { return nullptr; }));
    }
    ~Factory() override { factory->release(); }

    TUID workingId, emptyId;
    int alive = 0;
    CPluginFactory* factory =
        new CPluginFactory(PFactoryInfo("Maker", "www.maker.example", "mailto:a@b.example", 16));
};

// The records that were given are gone by now.
TEST_F(Factory, DescribesItsClassesInEveryForm)
{
    PClassInfo brief;
    PClassInfo2 record;
    PClassInfoW wide;
    ASSERT_EQ(factory->countClasses(), 2);
    for (const int32 index : {-1, 2, 1000, 0}) {
        const tresult wanted = index == 0 ? kResultOk : kInvalidArgument;
        EXPECT_EQ(factory->getClassInfo(index, &brief), wanted);
        EXPECT_EQ(factory->getClassInfo2(index, &record), wanted);
        EXPECT_EQ(factory->getClassInfoUnicode(index, &wide), wanted);
    }
    for (const char* const found : {brief.cid, record.cid, wide.cid})
        EXPECT_EQ(std::memcmp(found, workingId, sizeof(TUID)), 0);
    EXPECT_STREQ(brief.name, "Worker");
    EXPECT_STREQ(record.subCategories, "Fx|EQ");
    EXPECT_EQ(wide.classFlags, 1u);
    EXPECT_EQ(wide.cardinality, 0x7FFFFFFF);
    EXPECT_EQ(std::basic_string<char16>(wide.version), STR16("2.3"));
}

TEST_F(Factory, ACreatedObjectBelongsToTheCallerAloneAndAFailedOneLeavesNothingBehind)
{
    const TUID unknownId = {9};
    const struct {
        FIDString cid, iid;
    } failures[] = {{unknownId, Vst::IAudioProcessor::iid},
                    {emptyId, Vst::IAudioProcessor::iid},
                    {workingId, IPluginFactory::iid},
                    {nullptr, Vst::IAudioProcessor::iid}};
    void* object = this;
    for (const auto& failure : failures) {
        EXPECT_EQ(factory->createInstance(failure.cid, failure.iid, &object), kNoInterface);
        EXPECT_EQ(object, nullptr);
        EXPECT_EQ(alive, 0);
        object = this;
    }
    ASSERT_EQ(factory->createInstance(workingId, Vst::IComponent::iid, &object), kResultOk);
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(static_cast<Vst::IComponent*>(object)->release(), 0u);
    EXPECT_EQ(alive, 0);
}

TEST_F(Factory, TheGlobalOneIsForgottenWithItsOwnEndAlone)
{
    auto* const other = new CPluginFactory(PFactoryInfo());
    gPluginFactory = factory;
    EXPECT_EQ(other->release(), 0u);
    EXPECT_EQ(gPluginFactory, factory) << "the end of another factory cleared the library's own";
    factory->addRef();
    EXPECT_EQ(factory->release(), 1u);
    auto* const last = gPluginFactory = new CPluginFactory(PFactoryInfo());
    EXPECT_EQ(last->release(), 0u);
    EXPECT_EQ(gPluginFactory, nullptr);
}

}  // namespace
