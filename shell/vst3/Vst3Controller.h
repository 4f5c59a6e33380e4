// Vst3Controller: the controller for VST 3 hosts. It checks their calls, as the VST 2 wrapper does
// for VST 2 hosts.
#pragma once

#include "params/PitchNamesController.h"
#include "params/ids/ParameterIds.h"

#include <atomic>
#include <thread>
#include <vector>

namespace Steinberg {
namespace Vst {

class Vst3Controller : public PitchNamesController {
public:
    explicit Vst3Controller(platform::SettingsStore& store = platform::userSettings());

    tresult PLUGIN_API initialize(FUnknown* context) override;

    // Sets the parameters to the values of a component's state (ComponentState.h), for hosts that
    // read the parameters before they load the controller's own state. A state without values
    // changes nothing and gives kResultOk too.
    tresult PLUGIN_API setComponentState(IBStream* state) override;
    // Both work from the stream's present position on, for hosts whose stream is part of a file. A
    // state that is empty or truncated changes nothing and gives kResultFalse; one with fewer
    // records than this build writes is complete.
    tresult PLUGIN_API setState(IBStream* state) override;
    tresult PLUGIN_API getState(IBStream* state) override;

    // Reports to the host when the latency becomes 0 or is no longer 0. One outside 0 to 1 s is
    // ignored.
    tresult PLUGIN_API setParamNormalized(ParamID id, ParamValue value) override;
    // An index outside the table gives kInvalidArgument.
    tresult PLUGIN_API getParameterInfo(int32 index, ParameterInfo& info) override;
    tresult PLUGIN_API getUnitInfo(int32 index, UnitInfo& info) override;

    // Sends the values to the processor.
    tresult PLUGIN_API connect(IConnectionPoint* other) override;
    tresult PLUGIN_API notify(IMessage* message) override;

    // Reports all parameters to the host as one group edit.
    void setCurrentPreset(int32 index) override;
    // Every edit is reported to the host inside a gesture; none is while the host loads a state.
    // During the user's gesture on a control, the first edit of another parameter, of the knob's
    // ring or the linked channel, begins one that ends together with the user's.
    tresult beginEdit(ParamID id) override;
    tresult performEdit(ParamID id, ParamValue value) override;
    tresult endEdit(ParamID id) override;
    tresult setDirty(TBool state) override;

private:
    // False if the message cannot be delivered.
    bool sendValues(FIDString messageName);
    void reportValues();
    static bool isCompleteState(const std::vector<char>& bytes, int32 size);
    void setLatency(ParamValue seconds);

    // The thread that loads a state. Edits on other threads, such as the user's, are reported.
    std::atomic<std::thread::id> loading{std::thread::id()};
    bool isLoading() const { return loading == std::this_thread::get_id(); }

    static_assert(kPresetParamCount <= 64, "one bit for each parameter");
    std::atomic<uint64> inGesture{0};
    std::atomic<uint64> joined{0};  // those of inGesture that end with the user's
};

}  // namespace Vst
}  // namespace Steinberg
