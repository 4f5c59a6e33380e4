// AudioEffect: the SDK's base class of an audio processor component, with its buses and the stored
// process setup.
#pragma once

#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "public.sdk/source/vst/vstcomponent.h"

namespace Steinberg {
namespace Vst {

class AudioEffect : public Component, public IAudioProcessor {
public:
    AudioEffect();

    // Each appends a bus to its list, which owns it, and returns it.
    AudioBus* addAudioInput(const TChar* name, SpeakerArrangement arr, BusType busType = kMain,
                            int32 flags = BusInfo::kDefaultActive);
    AudioBus* addAudioOutput(const TChar* name, SpeakerArrangement arr, BusType busType = kMain,
                             int32 flags = BusInfo::kDefaultActive);

    // The bus of that index, or null.
    AudioBus* getAudioInput(int32 index);
    AudioBus* getAudioOutput(int32 index);

    // IAudioProcessor. The default accepts any arrangement for the buses that exist and only 32-bit
    // samples, processes nothing, and has no latency and no tail.
    tresult PLUGIN_API setBusArrangements(SpeakerArrangement* inputs, int32 numIns,
                                          SpeakerArrangement* outputs, int32 numOuts) override;
    tresult PLUGIN_API getBusArrangement(BusDirection dir, int32 index,
                                         SpeakerArrangement& arr) override;
    tresult PLUGIN_API canProcessSampleSize(int32 symbolicSampleSize) override;
    uint32 PLUGIN_API getLatencySamples() override { return 0; }
    // Stores the setup; a refused sample size gives kResultFalse and keeps the old size only.
    tresult PLUGIN_API setupProcessing(ProcessSetup& setup) override;
    tresult PLUGIN_API setProcessing(TBool state) override;
    tresult PLUGIN_API process(ProcessData& data) override;
    uint32 PLUGIN_API getTailSamples() override { return kNoTail; }

    OBJ_METHODS(AudioEffect, Component)
    DEFINE_INTERFACES
    DEF_INTERFACE(IAudioProcessor)
    END_DEFINE_INTERFACES(Component)
    REFCOUNT_METHODS(Component)

protected:
    ProcessSetup processSetup;
};

}  // namespace Vst
}  // namespace Steinberg
