// AudioEffect: what a component inherits when it defines nothing of its own.
#include "public.sdk/source/vst/vstaudioeffect.h"

#include <gtest/gtest.h>

#include <tuple>

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
    const ProcessSetup& stored = effect.stored();
    EXPECT_EQ(std::tie(stored.processMode, stored.symbolicSampleSize, stored.maxSamplesPerBlock,
                       stored.sampleRate),
              std::make_tuple(kOffline, kSample32, 333, 96000.0));
}

TEST(AudioEffect, BusesOutsideTheListAreNullAndArrangementsForThemAreRefused)
{
    PlainEffect effect;
    AudioBus* const input = effect.addAudioInput(STR16("In"), SpeakerArr::kStereo);
    AudioBus* const output = effect.addAudioOutput(STR16("Out"), SpeakerArr::kStereo);
    for (const int32 index : {-1, 0, 1, 1000}) {
        EXPECT_EQ(effect.getAudioInput(index), index == 0 ? input : nullptr);
        EXPECT_EQ(effect.getAudioOutput(index), index == 0 ? output : nullptr);
        SpeakerArrangement found = 77;
        EXPECT_EQ(effect.getBusArrangement(kOutput, index, found),
                  index == 0 ? kResultTrue : kInvalidArgument);
        EXPECT_EQ(found, index == 0 ? SpeakerArr::kStereo : 77u);
    }
    SpeakerArrangement mono[] = {SpeakerArr::kMono, SpeakerArr::kMono};
    EXPECT_EQ(effect.setBusArrangements(mono, -1, mono, 1), kInvalidArgument);
    EXPECT_EQ(effect.setBusArrangements(mono, 1, mono, 2), kResultFalse);
    BusInfo info;
    ASSERT_EQ(effect.getBusInfo(kAudio, kInput, 0, info), kResultTrue);
    EXPECT_EQ(info.channelCount, 2) << "a refusal changed a bus";
    EXPECT_EQ(effect.setBusArrangements(mono, 1, mono, 0), kResultTrue);
    ASSERT_EQ(effect.getBusInfo(kAudio, kInput, 0, info), kResultTrue);
    EXPECT_EQ(info.channelCount, 1);
    ASSERT_EQ(effect.getBusInfo(kAudio, kOutput, 0, info), kResultTrue);
    EXPECT_EQ(info.channelCount, 2);
}

}  // namespace
