// CPluginFactory: object creation and its own lifetime; and the bus functions that a component
// inherits from AudioEffect.
#include "public.sdk/source/main/pluginfactory.h"
#include "public.sdk/source/vst/vstaudioeffect.h"

#include <gtest/gtest.h>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

// Created by the factory; counts its instances in the context.
struct Counted : Vst::AudioEffect {
    explicit Counted(int& count) : alive(count) { ++alive; }
    ~Counted() override { --alive; }
    int& alive;
};

TEST(Factory, ACreatedObjectBelongsToTheCallerAloneAndAFailedOneLeavesNothingBehind)
{
    const TUID workingId = {1}, emptyId = {2}, unknownId = {9};
    int alive = 0;
    auto factory = owned(new CPluginFactory(PFactoryInfo()));
    const auto makeCounted = [](void* count) -> FUnknown* {
        return static_cast<IAudioProcessor*>(new Counted(*static_cast<int*>(count)));
    };
    const PClassInfo2 working(workingId, 1, "Audio Module Class", "Worker", 1, "Fx", "", "", "");
    const PClassInfo2 empty(emptyId, 1, "Nothing", "Empty", 0, "", "", "", "");
    factory->registerClass(&working, makeCounted, &alive);
    factory->registerClass(&empty, [](void*) -> FUnknown* { return nullptr; });
    PClassInfo record;
    for (const int32 index : {-1, 0, 1, 2, 1000})
        EXPECT_EQ(factory->getClassInfo(index, &record) == kResultOk, index == 0 || index == 1);
    EXPECT_STREQ(record.name, "Empty");
    PClassInfoW wide;
    EXPECT_EQ(factory->getClassInfoUnicode(1, &wide), kResultOk);
    EXPECT_EQ(std::basic_string<char16>(wide.name), STR16("Empty"));

    const struct {
        FIDString cid, iid;
    } failures[] = {{unknownId, IAudioProcessor::iid},
                    {emptyId, IAudioProcessor::iid},
                    {workingId, IPluginFactory::iid},
                    {nullptr, IAudioProcessor::iid}};
    void* object = &alive;
    for (const auto& failure : failures) {
        EXPECT_EQ(factory->createInstance(failure.cid, failure.iid, &object), kNoInterface);
        EXPECT_EQ(object, nullptr);
        EXPECT_EQ(alive, 0);
        object = &alive;
    }
    ASSERT_EQ(factory->createInstance(workingId, IComponent::iid, &object), kResultOk);
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(static_cast<IComponent*>(object)->release(), 0u);
    EXPECT_EQ(alive, 0);
}

TEST(Factory, TheGlobalPointerIsClearedOnlyWhenItsOwnFactoryIsDestroyed)
{
    auto* const other = new CPluginFactory(PFactoryInfo());
    gPluginFactory = new CPluginFactory(PFactoryInfo());
    EXPECT_EQ(other->release(), 0u);
    ASSERT_NE(gPluginFactory, nullptr) << "destroying another factory cleared the library's own";
    gPluginFactory->addRef();
    EXPECT_EQ(gPluginFactory->release(), 1u);
    EXPECT_EQ(gPluginFactory->release(), 0u);
    EXPECT_EQ(gPluginFactory, nullptr);
}

TEST(AudioEffect, BusesOutsideTheListAreNullAndSoIsTheirArrangement)
{
    Vst::AudioEffect effect;
    AudioBus* const input = effect.addAudioInput(STR16("In"), SpeakerArr::kStereo);
    effect.addAudioOutput(STR16("Out"), SpeakerArr::kStereo);
    for (const int32 index : {-1, 0, 1, 1000}) {
        EXPECT_EQ(effect.getAudioInput(index), index == 0 ? input : nullptr);
        SpeakerArrangement found = 77;
        EXPECT_EQ(effect.getBusArrangement(kOutput, index, found),
                  index == 0 ? kResultTrue : kInvalidArgument);
        EXPECT_EQ(found, index == 0 ? SpeakerArr::kStereo : 77u);
    }
    SpeakerArrangement mono[] = {SpeakerArr::kMono, SpeakerArr::kMono};
    EXPECT_EQ(effect.setBusArrangements(mono, 1, mono, 2), kResultFalse);
    EXPECT_EQ(input->getArrangement(), SpeakerArr::kStereo) << "a refusal changed a bus";
}

}  // namespace
