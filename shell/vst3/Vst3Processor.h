// Vst3Processor: the processor for VST 3 hosts. Unlike the VST 2 wrapper, they pass blocks of any
// shape and do not send the controller's values at the start.
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

    // The selected preset's values (ComponentState.h), asked from the controller if one is
    // connected. Nothing is written while they are unknown: the controller then keeps its initial
    // values. A state without values changes nothing and gives kResultOk too.
    tresult PLUGIN_API getState(IBStream* state) override;
    tresult PLUGIN_API setState(IBStream* state) override;

    // Setup, arrangement and activation wait for a block that another thread is processing; a block
    // during one of them is silent. A rate outside 0 to 10 MHz gives kInvalidArgument.
    tresult PLUGIN_API setupProcessing(ProcessSetup& setup) override;
    // Sends the latency to the controller, before the first block.
    tresult PLUGIN_API setActive(TBool state) override;
    tresult PLUGIN_API setBusArrangements(SpeakerArrangement* inputs, int32 numIns,
                                          SpeakerArrangement* outputs, int32 numOuts) override;
    tresult PLUGIN_API setProcessing(TBool) override { return kResultOk; }
    // 3 s: the filters' decay after the end of the input.
    uint32 PLUGIN_API getTailSamples() override;

    // Of each parameter the last value of a block counts, limited to 0..1. A value that is not a
    // number or that is unchanged is ignored.
    //
    // Takes blocks of any length, also of 0 samples for parameters alone, and does not change the
    // inputs. A bus or channel that is missing reads as silence; output to it is dropped. Channels
    // beyond those of the arrangement become silence. 64-bit blocks are refused.
    tresult PLUGIN_API process(ProcessData& data) override;

    // Takes the controller's values (Messages.h) for the start of the next block or for a state.
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
    std::array<std::atomic<ParamValue>, kPresetParamCount> stateValues{};  // for a state, by id
    std::array<ParamValue, kPresetParamCount> delivered;  // last values that the strips got
    ParameterChanges pendingChanges;
    std::vector<Sample32> scratch[2 * 2];  // two channels in, two out, for one slice
};

}  // namespace Vst
}  // namespace Steinberg
