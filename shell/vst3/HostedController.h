// HostedController: the controller as hosts of VST 3 meet it directly, where nobody stands between
// it and what a host asks or hands over.
#pragma once

#include "PitchNamesController.h"

namespace Steinberg {
namespace Vst {

class HostedController : public PitchNamesController {
public:
    explicit HostedController(platform::SettingsStore& store = platform::userSettings());

    tresult PLUGIN_API initialize(FUnknown* context) SMTG_OVERRIDE;

    // Any component state is taken: the component keeps none.
    tresult PLUGIN_API setComponentState(IBStream* state) SMTG_OVERRIDE;
    // Both work from the stream's present position on, for hosts whose stream is part of a file. An
    // empty state changes nothing and gives kResultFalse; of one that is cut short, the rest is
    // taken as zeros.
    tresult PLUGIN_API setState(IBStream* state) SMTG_OVERRIDE;
    tresult PLUGIN_API getState(IBStream* state) SMTG_OVERRIDE;

    // A latency that comes or goes is reported to the host, once.
    tresult PLUGIN_API setParamNormalized(ParamID id, ParamValue value) SMTG_OVERRIDE;
    // An index outside the table gives kInvalidArgument.
    tresult PLUGIN_API getParameterInfo(int32 index, ParameterInfo& info) SMTG_OVERRIDE;
    tresult PLUGIN_API getUnitInfo(int32 index, UnitInfo& info) SMTG_OVERRIDE;

    // From here on the processor follows.
    tresult PLUGIN_API connect(IConnectionPoint* other) SMTG_OVERRIDE;

private:
    void sendValues();
    void keepLatency(ParamValue seconds);
};

}  // namespace Vst
}  // namespace Steinberg
