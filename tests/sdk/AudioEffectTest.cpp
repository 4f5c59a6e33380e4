// AudioEffect: what a component inherits when it defines nothing of its own.
#include "public.sdk/source/vst/vstaudioeffect.h"

#include <gtest/gtest.h>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

TEST(AudioEffect, BusesOutsideTheListAreNullAndSoIsTheirArrangement)
{
    AudioEffect effect;
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
