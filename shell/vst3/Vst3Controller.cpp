// Vst3Controller: states in streams of any kind, the latency, and values for the processor.
#include "shell/vst3/Vst3Controller.h"

#include "params/ParameterTable.h"
#include "presets/ComponentState.h"
#include "shell/vst3/Messages.h"
#include "shell/vst3/Vst3Editor.h"

#include "public.sdk/source/common/memorystream.h"

#include <algorithm>
#include <new>
#include <vector>

namespace Steinberg {
namespace Vst {

namespace {

// Seconds: the processor's latency of 96 samples, before the rate is known.
constexpr ParamValue kLatencyAtStart = 96.0 / 44100.0;

constexpr uint64 bitOf(ParamID id)
{
    return uint64(1) << id;
}

}  // namespace

Vst3Controller::Vst3Controller(platform::SettingsStore& store)
    : PitchNamesController(store, Vst3Editor::create)
{
}

tresult PLUGIN_API Vst3Controller::setComponentState(IBStream* state)
{
    if (!state)
        return kInvalidArgument;
    try {
        const StateValues values = readComponentState(*state);
        for (ParamID id = 0; id < values.size(); ++id)
            if (values[id])
                setParamNormalized(id, *values[id]);
        return kResultOk;
    } catch (const std::bad_alloc&) {
        return kOutOfMemory;
    }
}

// `size` is the number of bytes that the stream gave. A state of the full size is complete; a
// shorter one is, if it contains as many bytes of records as its header announces.
bool Vst3Controller::isCompleteState(const std::vector<char>& bytes, int32 size)
{
    if (size == kStateBufferSize)
        return true;
    constexpr auto kHead = static_cast<int32>(kStatePrefix.size() + kFileHeaderSize);
    if (size < kHead)
        return false;
    const FileHeader header =
        readHeader(reinterpret_cast<const uint8*>(bytes.data()) + kStatePrefix.size());
    return header.magic == kMagic && header.payloadSize >= 0 && header.payloadSize <= size - kHead;
}

tresult PLUGIN_API Vst3Controller::setState(IBStream* state)
{
    if (!state)
        return kInvalidArgument;
    try {
        std::vector<char> bytes(kStateBufferSize, 0);
        int32 total = 0, count = 0;
        while (total < kStateBufferSize
               && state->read(bytes.data() + total, kStateBufferSize - total, &count) == kResultOk
               && count > 0)
            // Some streams report more than they were asked for.
            total += std::min(count, kStateBufferSize - total);
        if (!isCompleteState(bytes, total))
            return kResultFalse;
        MemoryStream copy(bytes.data(), kStateBufferSize);
        loading = std::this_thread::get_id();
        const tresult result = PitchNamesController::setState(&copy);
        loading = std::thread::id();
        if (!sendValues(kValuesMessage))
            reportValues();
        return result;
    } catch (const std::bad_alloc&) {
        loading = std::thread::id();
        return kOutOfMemory;
    }
}

tresult PLUGIN_API Vst3Controller::getState(IBStream* state)
{
    if (!state)
        return kInvalidArgument;
    try {
        MemoryStream own;
        const tresult result = PitchNamesController::getState(&own);
        const auto size = static_cast<int32>(own.getSize());
        if (result != kResultOk || size == 0)
            return result;
        int32 written = 0;
        return state->write(own.getData(), size, &written) == kResultOk && written == size
            ? kResultOk
            : kResultFalse;
    } catch (const std::bad_alloc&) {
        return kOutOfMemory;
    }
}

tresult PLUGIN_API Vst3Controller::initialize(FUnknown* context)
{
    const tresult result = PitchNamesController::initialize(context);
    if (result == kResultOk)
        setLatency(kLatencyAtStart);
    return result;
}

// While they load, hosts also set values that they have read here: an unchanged latency must not be
// reported again.
tresult PLUGIN_API Vst3Controller::setParamNormalized(ParamID id, ParamValue value)
{
    const bool hadLatency = getParamNormalized(kLatency) > 0.0;
    const tresult result = PitchNamesController::setParamNormalized(id, value);
    if (id != kLatency || !(value >= 0.0 && value <= 1.0))
        return result;
    setLatency(value);
    if (hadLatency != (value > 0.0))
        if (IComponentHandler* const host = getComponentHandler())
            host->restartComponent(kLatencyChanged);
    return result;
}

// Sets the value of the latency parameter, which hosts show in their lists of parameters.
void Vst3Controller::setLatency(ParamValue seconds)
{
    const std::lock_guard<std::mutex> lock(dataMutex);
    if (Parameter* const latency = getParameterObject(kLatency))
        latency->setNormalized(seconds);
}

tresult PLUGIN_API Vst3Controller::getParameterInfo(int32 index, ParameterInfo& info)
{
    if (index < 0 || index >= getParameterCount())
        return kInvalidArgument;
    return PitchNamesController::getParameterInfo(index, info);
}

tresult PLUGIN_API Vst3Controller::getUnitInfo(int32 index, UnitInfo& info)
{
    if (index < 0 || index >= getUnitCount())
        return kInvalidArgument;
    return PitchNamesController::getUnitInfo(index, info);
}

tresult PLUGIN_API Vst3Controller::connect(IConnectionPoint* other)
{
    const tresult result = PitchNamesController::connect(other);
    if (result == kResultOk)
        sendValues(kValuesMessage);
    return result;
}

tresult PLUGIN_API Vst3Controller::notify(IMessage* message)
{
    const FIDString name = message ? message->getMessageID() : nullptr;
    if (name && FIDStringsEqual(name, kStateAskedMessage)) {
        sendValues(kStateValuesMessage);
        return kResultOk;
    }
    if (!name || !FIDStringsEqual(name, kActiveMessage))
        return PitchNamesController::notify(message);
    IAttributeList* const attributes = message->getAttributes();
    double latency = 0.0;
    int64 asks = 0;
    if (!attributes || attributes->getFloat(kLatencyAttribute, latency) != kResultTrue
        || attributes->getInt(kAsksAttribute, asks) != kResultTrue)
        return kResultFalse;
    setLatency(latency);
    if (asks)
        sendValues(kValuesMessage);
    return kResultOk;
}

void Vst3Controller::setCurrentPreset(int32 index)
{
    if (isLoading())
        return PitchNamesController::setCurrentPreset(index);
    startGroupEdit();
    PitchNamesController::setCurrentPreset(index);
    finishGroupEdit();
}

tresult Vst3Controller::beginEdit(ParamID id)
{
    if (isLoading())
        return kResultFalse;
    if (id < kPresetParamCount) {
        joined &= ~bitOf(id);
        if (inGesture.fetch_or(bitOf(id)) & bitOf(id))
            return kResultOk;
    }
    return PitchNamesController::beginEdit(id);
}

tresult Vst3Controller::endEdit(ParamID id)
{
    if (isLoading())
        return kResultFalse;
    if (id < kPresetParamCount)
        inGesture &= ~bitOf(id);
    const tresult result = PitchNamesController::endEdit(id);
    if (inGesture == joined)
        for (ParamID other = 0; other < kPresetParamCount; ++other)
            if (joined.fetch_and(~bitOf(other)) & bitOf(other))
                endEdit(other);
    return result;
}

tresult Vst3Controller::performEdit(ParamID id, ParamValue value)
{
    if (isLoading())
        return kResultFalse;
    if (id >= kPresetParamCount || (inGesture & bitOf(id)))
        return PitchNamesController::performEdit(id, value);
    const bool joins = inGesture != 0;
    beginEdit(id);
    const tresult result = PitchNamesController::performEdit(id, value);
    if (joins)
        joined |= bitOf(id);
    else
        endEdit(id);
    return result;
}

tresult Vst3Controller::setDirty(TBool state)
{
    return isLoading() ? kResultFalse : PitchNamesController::setDirty(state);
}

bool Vst3Controller::sendValues(FIDString messageName)
{
    const IPtr<IMessage> message = owned(allocateMessage());
    if (!message || !message->getAttributes())
        return false;
    double values[kPresetParamCount];
    for (ParamID id = 0; id < kPresetParamCount; ++id)
        values[id] = getParamNormalized(id);
    message->setMessageID(messageName);
    message->getAttributes()->setBinary(kValuesAttribute, values, sizeof values);
    return sendMessage(message) == kResultOk;
}

// Reports the values to the host, for a processor that is not connected.
void Vst3Controller::reportValues()
{
    startGroupEdit();
    for (ParamID id = 0; id < kPresetParamCount; ++id)
        performEdit(id, getParamNormalized(id));
    finishGroupEdit();
}

}  // namespace Vst
}  // namespace Steinberg
