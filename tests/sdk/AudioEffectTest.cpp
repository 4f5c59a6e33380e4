// AudioEffect: what a component inherits when it defines nothing of its own.
#include "public.sdk/source/vst/vstaudioeffect.h"

#include <gtest/gtest.h>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

struct PlainEffect : AudioEffect {
    const ProcessSetup& stored() const { return processSetup; }
};

TEST(AudioEffect, ARefusedSampleSizeKeepsTheOldSizeAndTheNewRateAndBlock)
{
    PlainEffect effect;
    ProcessSetup setup{kOffline, kSample64, 333, 96000.0};
    EXPECT_EQ(effect.setupProcessing(setup), kResultFalse);
    EXPECT_EQ(effect.stored().symbolicSampleSize, kSample32);
    EXPECT_EQ(effect.stored().sampleRate, 96000.0);
    EXPECT_EQ(effect.stored().maxSamplesPerBlock, 333);
    EXPECT_EQ(effect.stored().processMode, kOffline);
}

TEST(AudioEffect, BusesOutsideTheListAreNullAndArrangementsForThemAreRefused)
{
    PlainEffect effect;
    AudioBus* input = effect.addAudioInput(STR16("In"), SpeakerArr::kStereo);
    AudioBus* output = effect.addAudioOutput(STR16("Out"), SpeakerArr::kStereo);
    EXPECT_EQ(effect.getAudioInput(0), input);
    EXPECT_EQ(effect.getAudioOutput(0), output);
    for (const int32 index : {-1, 1, 1000}) {
        EXPECT_EQ(effect.getAudioInput(index), nullptr);
        EXPECT_EQ(effect.getAudioOutput(index), nullptr);
        SpeakerArrangement found = 77;
        EXPECT_EQ(effect.getBusArrangement(kOutput, index, found), kInvalidArgument);
        EXPECT_EQ(found, 77u);
    }

    SpeakerArrangement mono[] = {SpeakerArr::kMono, SpeakerArr::kMono};
    EXPECT_EQ(effect.setBusArrangements(mono, -1, mono, 1), kInvalidArgument);
    EXPECT_EQ(effect.setBusArrangements(mono, 1, mono, 2), kResultFalse);
    SpeakerArrangement found = 0;
    EXPECT_EQ(effect.getBusArrangement(kInput, 0, found), kResultTrue);
    EXPECT_EQ(found, SpeakerArr::kStereo) << "a refusal changed a bus";
    EXPECT_EQ(effect.setBusArrangements(mono, 1, mono, 0), kResultTrue);
    BusInfo info;
    ASSERT_EQ(effect.getBusInfo(kAudio, kInput, 0, info), kResultTrue);
    EXPECT_EQ(info.channelCount, 1);
    ASSERT_EQ(effect.getBusInfo(kAudio, kOutput, 0, info), kResultTrue);
    EXPECT_EQ(info.channelCount, 2);
}

}  // namespace
