// Vst3Controller: the controller for hosts of VST 3, whose calls no wrapper checks or orders.
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

    // Takes the values that a component's state tells (ComponentState.h), so that hosts that read
    // the parameters before they load the controller's own state find them. Any state is taken; one
    // that tells nothing changes nothing.
    tresult PLUGIN_API setComponentState(IBStream* state) override;
    // Both work from the stream's present position on, for hosts whose stream is part of a file. A
    // state that is empty or cut short changes nothing and gives kResultFalse; one that holds fewer
    // records than this build writes is whole.
    tresult PLUGIN_API setState(IBStream* state) override;
    tresult PLUGIN_API getState(IBStream* state) override;

    // A latency that comes or goes is reported to the host, once. One outside 0 to 1 s is ignored.
    tresult PLUGIN_API setParamNormalized(ParamID id, ParamValue value) override;
    // An index outside the table gives kInvalidArgument.
    tresult PLUGIN_API getParameterInfo(int32 index, ParameterInfo& info) override;
    tresult PLUGIN_API getUnitInfo(int32 index, UnitInfo& info) override;

    // From here on the processor follows.
    tresult PLUGIN_API connect(IConnectionPoint* other) override;
    tresult PLUGIN_API notify(IMessage* message) override;

    // One change for the host, however many parameters it has.
    void setCurrentPreset(int32 index) override;
    // The host hears of every edit as part of a gesture, and of none while it loads a state.
    tresult beginEdit(ParamID id) override;
    tresult performEdit(ParamID id, ParamValue value) override;
    tresult endEdit(ParamID id) override;
    tresult setDirty(TBool state) override;

private:
    // False where nobody takes a message.
    bool sendValues(FIDString messageName);
    void reportValues();
    static bool isWholeState(const std::vector<char>& bytes, int32 size);
    void keepLatency(ParamValue seconds);

    // The thread that loads a state; what the user does on another one is reported.
    std::atomic<std::thread::id> loading{std::thread::id()};
    bool isLoading() const { return loading == std::this_thread::get_id(); }

    static_assert(kPresetParamCount <= 64, "one bit for each parameter");
    std::atomic<uint64> inGesture{0};
};

}  // namespace Vst
}  // namespace Steinberg
