// Vst3Processor: the processor for hosts of VST 3. They hand over blocks of any shape, which the
// VST 2 wrapper does not, and do not pass on the controller's values at the start.
#pragma once

#include "params/ids/ParameterIds.h"
#include "shell/PitchNamesProcessor.h"

#include "public.sdk/source/vst/hosting/parameterchanges.h"
#include "public.sdk/source/vst/vst2wrapper/parametertransfer.h"
#include "public.sdk/source/vst/vst2wrapper/processgate.h"

#include <array>
#include <atomic>
#include <vector>

namespace Steinberg {
namespace Vst {

class Vst3Processor : public PitchNamesProcessor {
public:
    Vst3Processor();

    // The selected preset's values (ComponentState.h), those that the controller has where one is
    // connected. Empty while they are not known: then the controller's start values stand. Any
    // state is taken; one that tells nothing changes nothing.
    tresult PLUGIN_API getState(IBStream* state) override;
    tresult PLUGIN_API setState(IBStream* state) override;

    // Setup, arrangement and activity wait for the block that another thread is inside; a block
    // that meets one of them is silent. A rate that is no rate gives kInvalidArgument.
    tresult PLUGIN_API setupProcessing(ProcessSetup& setup) override;
    // Tells the controller the latency, ahead of the first block.
    tresult PLUGIN_API setActive(TBool state) override;
    tresult PLUGIN_API setBusArrangements(SpeakerArrangement* inputs, int32 numIns,
                                          SpeakerArrangement* outputs, int32 numOuts) override;
    tresult PLUGIN_API setProcessing(TBool) override { return kResultOk; }
    // How long the filters may be heard after the input has ended: 3 s.
    uint32 PLUGIN_API getTailSamples() override;

    // Of each parameter the last value of a block counts, held to 0..1. One that is no number, or
    // is there already, is no change, however often a host repeats it.
    //
    // Takes blocks of any length, also of 0 samples for parameters alone, and leaves the inputs as
    // they are. A bus or channel that is missing reads as silence; output to it is dropped.
    // Channels beyond those of the arrangement become silence. 64-bit blocks are refused.
    tresult PLUGIN_API process(ProcessData& data) override;

    // Takes the controller's values (Messages.h) for the head of the next block or for a state.
    tresult PLUGIN_API notify(IMessage* message) override;

private:
    void takeControllerValues();
    void takeHostValues(IParameterChanges& changes);
    void keepHostValues(IParameterChanges& changes);
    void addChange(ParamID id, ParamValue value);
    void applyPendingChanges();
    void processSlice(ProcessData& data, int32 offset, int32 count);

    ProcessGate gate;
    ParameterTransfer controllerValues;
    std::atomic<bool> knowsValues{false};
    // What a state tells, by id.
    std::array<std::atomic<ParamValue>, kPresetParamCount> stateValues{};
    std::array<ParamValue, kPresetParamCount> delivered;  // by switchOf
    ParameterChanges pendingChanges;
    std::vector<Sample32> scratch[2 * 2];  // two channels in, two out, for one slice
};

}  // namespace Vst
}  // namespace Steinberg
