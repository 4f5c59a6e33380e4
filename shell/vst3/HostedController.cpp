// HostedController: states in streams of any kind, the latency, and values for the processor.
#include "HostedController.h"

#include "ControllerValues.h"
#include "HostedEditor.h"
#include "ParameterTable.h"

#include "public.sdk/source/common/memorystream.h"

#include <vector>

namespace Steinberg {
namespace Vst {

namespace {

// 96 samples, as the processor delays before it knows the rate.
constexpr ParamValue kLatencyAtStart = 96.0 / 44100.0;

}  // namespace

HostedController::HostedController(platform::SettingsStore& settings)
    : PitchNamesController(settings, HostedEditor::create)
{
}

tresult PLUGIN_API HostedController::setComponentState(IBStream* /*state*/)
{
    return kResultOk;
}

tresult PLUGIN_API HostedController::setState(IBStream* state)
{
    if (!state)
        return kInvalidArgument;
    std::vector<char> bytes(kStateBufferSize, 0);
    int32 total = 0, count = 0;
    while (total < kStateBufferSize
           && state->read(bytes.data() + total, kStateBufferSize - total, &count) == kResultOk
           && count > 0)
        total += count;
    if (total == 0)
        return kResultFalse;
    MemoryStream copy(bytes.data(), kStateBufferSize);
    const tresult result = PitchNamesController::setState(&copy);
    sendValues();
    return result;
}

tresult PLUGIN_API HostedController::getState(IBStream* state)
{
    if (!state)
        return kInvalidArgument;
    MemoryStream own;
    const tresult result = PitchNamesController::getState(&own);
    const auto size = static_cast<int32>(own.getSize());
    if (result != kResultOk || size == 0)
        return result;
    int32 written = 0;
    return state->write(own.getData(), size, &written) == kResultOk && written == size
        ? kResultOk
        : kResultFalse;
}

tresult PLUGIN_API HostedController::initialize(FUnknown* initialContext)
{
    const tresult result = PitchNamesController::initialize(initialContext);
    if (result == kResultOk)
        keepLatency(kLatencyAtStart);
    return result;
}

// Hosts also hand back what they have read here, in the midst of loading; that is no news.
tresult PLUGIN_API HostedController::setParamNormalized(ParamID id, ParamValue value)
{
    const bool hadLatency = getParamNormalized(kLatency) > 0.0;
    const tresult result = PitchNamesController::setParamNormalized(id, value);
    if (id != kLatency)
        return result;
    keepLatency(value);
    if (hadLatency != (value > 0.0))
        if (IComponentHandler* const host = getComponentHandler())
            host->restartComponent(kLatencyChanged);
    return result;
}

// For the parameter lists of hosts, which ask for its value.
void HostedController::keepLatency(ParamValue seconds)
{
    if (Parameter* const latency = getParameterObject(kLatency))
        latency->setNormalized(seconds);
}

tresult PLUGIN_API HostedController::getParameterInfo(int32 index, ParameterInfo& info)
{
    if (index < 0 || index >= getParameterCount())
        return kInvalidArgument;
    return PitchNamesController::getParameterInfo(index, info);
}

tresult PLUGIN_API HostedController::getUnitInfo(int32 index, UnitInfo& info)
{
    if (index < 0 || index >= getUnitCount())
        return kInvalidArgument;
    return PitchNamesController::getUnitInfo(index, info);
}

tresult PLUGIN_API HostedController::connect(IConnectionPoint* other)
{
    const tresult result = PitchNamesController::connect(other);
    if (result == kResultOk)
        sendValues();
    return result;
}

void HostedController::sendValues()
{
    const IPtr<IMessage> message = owned(allocateMessage());
    if (!message || !message->getAttributes())
        return;
    double values[kPresetParamCount];
    for (ParamID id = 0; id < kPresetParamCount; ++id)
        values[id] = getParamNormalized(id);
    message->setMessageID(kControllerValuesMessage);
    message->getAttributes()->setBinary(kControllerValuesAttribute, values, sizeof values);
    sendMessage(message);
}

}  // namespace Vst
}  // namespace Steinberg
