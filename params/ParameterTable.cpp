#include "params/ParameterTable.h"

#include "params/ParameterClasses.h"
#include "params/ids/ParameterTraits.h"
#include "params/lookup/FrequencySteps.h"

#include "pluginterfaces/base/ustring.h"

#include <array>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

template <std::size_t N>
Parameter* frequencyParameter(const TChar* title, ParamID id, const std::array<double, N>& table)
{
    return new FilterFreqParameter(title, ParameterInfo::kCanAutomate, id, table.data(),
                                   static_cast<int32>(N));
}

// Null for a switch.
Parameter* displayParameter(ParamID id, const TChar* title)
{
    using param::Kind;
    constexpr int32 flags = ParameterInfo::kCanAutomate;
    switch (param::traitsOf(id).kind) {
    case Kind::Channel:
        return new ChannelParameter(title, flags, id);
    case Kind::MS:
        return new MSParameter(title, flags, id);
    case Kind::Gain:
        return new FilterGainParameter(title, flags, id);
    case Kind::Drive:
        return new DriveParameter(title, flags, id);
    case Kind::HighPass:
        return frequencyParameter(title, id, kHighPassStepsHz);
    case Kind::Low:
        return frequencyParameter(title, id, kLowStepsHz);
    case Kind::Mid:
        return frequencyParameter(title, id, kMidStepsHz);
    case Kind::High:
        return frequencyParameter(title, id, kHighStepsHz);
    case Kind::SwitchOff:
    case Kind::SwitchOn:
        break;
    }
    return nullptr;
}

}  // namespace

void addParameters(ParameterContainer& parameters)
{
    for (ParamID id = 0; id < kPresetParamCount; ++id) {
        String128 title = {};
        UString(title, 128).fromAscii(param::traitsOf(id).title);
        if (Parameter* parameter = displayParameter(id, title)) {
            parameters.addParameter(parameter);
            continue;
        }
        const double initial = param::traitsOf(id).kind == param::Kind::SwitchOn ? 1.0 : 0.0;
        parameters.addParameter(title, nullptr, 1, initial, ParameterInfo::kCanAutomate, id,
                                kRootUnitId);
    }
    parameters.addParameter(new LatencyParameter);
}
