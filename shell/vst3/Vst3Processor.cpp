// Vst3Processor: states, setup, blocks of any shape, and the values from host and controller.
#include "shell/vst3/Vst3Processor.h"

#include "presets/ComponentState.h"
#include "shell/vst3/Messages.h"

#include "pluginterfaces/vst/ivstmessage.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>
#include <optional>
#include <utility>

namespace Steinberg {
namespace Vst {

namespace {

constexpr int32 kMinScratch = 64;
constexpr int32 kMaxScratch = 1 << 20;
constexpr double kMaxRate = 1e7;  // Hz
constexpr double kTailSeconds = 3.0;

// The channels of the first bus; null for one that the host leaves out.
struct HostChannels {
    Sample32* channel[2] = {nullptr, nullptr};

    HostChannels(const AudioBusBuffers* buses, int32 busCount)
    {
        if (!buses || busCount < 1 || !buses->channelBuffers32)
            return;
        std::copy_n(buses->channelBuffers32, std::clamp(buses->numChannels, int32(0), int32(2)),
                    channel);
    }
};

// The id of a parameter's entry in `delivered`. The left and right parameters of two pairs set the
// same switch and have one entry, so that a change of either counts after a change of the other.
ParamID entryOf(ParamID id)
{
    return id == kTrfoDsR ? kTrfoDsL : id == kAmpDsbR ? kAmpDsbL : id;
}

struct HostValue {
    ParamID id;
    ParamValue value;  // a number
};

// The last point of a queue; nothing if there is none, if it is not a number, or if the parameter
// is not one that presets store.
std::optional<HostValue> lastPoint(IParamValueQueue* queue)
{
    int32 offset = 0;
    ParamValue value = 0.0;
    if (!queue || queue->getPointCount() < 1 || queue->getParameterId() >= kPresetParamCount
        || queue->getPoint(queue->getPointCount() - 1, offset, value) != kResultTrue
        || std::isnan(value))
        return std::nullopt;
    return HostValue{queue->getParameterId(), value};
}

// Silences all output channels but the first `used` ones of the first bus.
void silenceRest(const ProcessData& data, int32 used)
{
    for (int32 bus = 0; data.outputs && bus < data.numOutputs; ++bus) {
        AudioBusBuffers& buffers = data.outputs[bus];
        buffers.silenceFlags = 0;
        if (!buffers.channelBuffers32)
            continue;
        for (int32 i = bus == 0 ? used : 0; i < buffers.numChannels; ++i) {
            if (Sample32* const samples = buffers.channelBuffers32[i])
                std::fill_n(samples, data.numSamples, 0.0f);
        }
    }
}

}  // namespace

Vst3Processor::Vst3Processor()
    : controllerValues(kPresetParamCount), pendingChanges(kPresetParamCount)
{
    delivered.fill(std::numeric_limits<ParamValue>::quiet_NaN());
    for (std::vector<Sample32>& buffer : scratch)
        buffer.assign(kMinScratch, 0.0f);
}

tresult PLUGIN_API Vst3Processor::getState(IBStream* state)
{
    if (!state)
        return kInvalidArgument;
    if (const IPtr<IMessage> message = owned(allocateMessage())) {
        message->setMessageID(kStateAskedMessage);
        sendMessage(message);
    }
    if (!knowsValues)
        return kResultOk;
    StateValues values;
    std::copy(stateValues.begin(), stateValues.end(), values.begin());
    try {
        std::vector<char> bytes = writeComponentState(values);
        const auto size = static_cast<int32>(bytes.size());
        int32 written = 0;
        return state->write(bytes.data(), size, &written) == kResultOk && written == size
            ? kResultOk
            : kResultFalse;
    } catch (const std::bad_alloc&) {
        return kOutOfMemory;
    }
}

tresult PLUGIN_API Vst3Processor::setState(IBStream* state)
{
    if (!state)
        return kInvalidArgument;
    try {
        const StateValues values = readComponentState(*state);
        for (std::size_t id = 0; id < values.size(); ++id)
            if (values[id]) {
                controllerValues.set(id, *values[id]);
                stateValues[id] = *values[id];
            }
        if (std::all_of(values.begin(), values.end(), [](const auto& value) { return !!value; }))
            knowsValues = true;
        return kResultOk;
    } catch (const std::bad_alloc&) {
        return kOutOfMemory;
    }
}

tresult PLUGIN_API Vst3Processor::setupProcessing(ProcessSetup& setup)
{
    if (!(setup.sampleRate > 0.0 && setup.sampleRate < kMaxRate) || setup.maxSamplesPerBlock < 0)
        return kInvalidArgument;
    const ProcessGate::Setup inside(gate);
    const int32 length = std::clamp(setup.maxSamplesPerBlock, kMinScratch, kMaxScratch);
    try {
        // All or none, since the first one's length counts for all.
        decltype(scratch) buffers;
        for (std::vector<Sample32>& buffer : buffers)
            buffer.assign(static_cast<std::size_t>(length), 0.0f);
        std::swap(scratch, buffers);
    } catch (const std::bad_alloc&) {
        return kOutOfMemory;
    }
    // Hosts built on JUCE read it before setActive.
    latencySamples = latencyAt(setup.sampleRate);
    return PitchNamesProcessor::setupProcessing(setup);
}

tresult PLUGIN_API Vst3Processor::setActive(TBool state)
{
    tresult result = kResultOk;
    {
        const ProcessGate::Setup inside(gate);
        result = PitchNamesProcessor::setActive(state);
    }
    const IPtr<IMessage> message = owned(state ? allocateMessage() : nullptr);
    if (!message || !message->getAttributes())
        return result;
    message->setMessageID(kActiveMessage);
    message->getAttributes()->setFloat(kLatencyAttribute,
                                       getLatencySamples() / processSetup.sampleRate);
    message->getAttributes()->setInt(kAsksAttribute, knowsValues ? 0 : 1);
    sendMessage(message);
    return result;
}

tresult PLUGIN_API Vst3Processor::setBusArrangements(SpeakerArrangement* inputs, int32 numIns,
                                                     SpeakerArrangement* outputs, int32 numOuts)
{
    if (!inputs || !outputs)
        return kInvalidArgument;
    const ProcessGate::Setup inside(gate);
    return PitchNamesProcessor::setBusArrangements(inputs, numIns, outputs, numOuts);
}

uint32 PLUGIN_API Vst3Processor::getTailSamples()
{
    return static_cast<uint32>(kTailSeconds * processSetup.sampleRate);
}

tresult PLUGIN_API Vst3Processor::process(ProcessData& data)
{
    if (data.symbolicSampleSize != kSample32)
        return kResultFalse;
    const ProcessGate::Block inside(gate);
    if (!inside) {
        if (data.inputParameterChanges)
            keepHostValues(*data.inputParameterChanges);
        silenceRest(data, 0);
        return kResultOk;
    }
    takeControllerValues();
    if (data.inputParameterChanges)
        takeHostValues(*data.inputParameterChanges);
    if (data.numSamples <= 0 || data.numOutputs <= 0)
        return kResultOk;

    const auto sliceLength = static_cast<int32>(scratch[0].size());
    for (int32 offset = 0; offset < data.numSamples; offset += sliceLength)
        processSlice(data, offset, std::min(sliceLength, data.numSamples - offset));
    silenceRest(data, stereoOut ? 2 : 1);
    return kResultOk;
}

// Processes a copy of the input, since the strips may change it in place and other plug-ins may use
// the same buffer.
void Vst3Processor::processSlice(ProcessData& data, int32 offset, int32 count)
{
    const HostChannels hostInputs(data.inputs, data.numInputs);
    const HostChannels hostOutputs(data.outputs, data.numOutputs);
    Sample32* inputs[2];
    Sample32* outputs[2];
    for (int i = 0; i < 2; ++i) {
        inputs[i] = scratch[i].data();
        if (hostInputs.channel[i])
            std::copy_n(hostInputs.channel[i] + offset, count, inputs[i]);
        else
            std::fill_n(inputs[i], count, 0.0f);
        outputs[i] =
            hostOutputs.channel[i] ? hostOutputs.channel[i] + offset : scratch[2 + i].data();
    }

    AudioBusBuffers input, output;
    input.numChannels = stereoIn ? 2 : 1;
    input.channelBuffers32 = inputs;
    output.numChannels = stereoOut ? 2 : 1;
    output.channelBuffers32 = outputs;
    ProcessData slice = data;
    slice.numSamples = count;
    slice.numInputs = slice.numOutputs = 1;
    slice.inputs = &input;
    slice.outputs = &output;
    slice.inputParameterChanges = nullptr;
    PitchNamesProcessor::process(slice);
}

void Vst3Processor::takeControllerValues()
{
    for (const ParameterTransfer::Change& change : controllerValues.takeChanges())
        addChange(static_cast<ParamID>(change.slot), change.value);
    applyPendingChanges();
}

void Vst3Processor::takeHostValues(IParameterChanges& changes)
{
    const int32 count = changes.getParameterCount();
    for (int32 i = 0; i < count; ++i)
        if (const auto change = lastPoint(changes.getParameterData(i)))
            addChange(change->id, change->value);
    applyPendingChanges();
}

// Keeps the changes for the next block that the gate admits.
void Vst3Processor::keepHostValues(IParameterChanges& changes)
{
    const int32 count = changes.getParameterCount();
    for (int32 i = 0; i < count; ++i)
        if (const auto change = lastPoint(changes.getParameterData(i)))
            controllerValues.set(change->id, change->value);
}

// Ignores an unchanged value. Some hosts repeat the value of an automated parameter with every
// block, and each one would restart the glide to it.
void Vst3Processor::addChange(ParamID id, ParamValue value)
{
    const ParamValue limited = std::clamp(value, 0.0, 1.0);
    stateValues[id] = limited;
    ParamValue& last = delivered[entryOf(id)];
    if (limited == last)
        return;
    last = limited;
    int32 index = 0;
    const int32 before = pendingChanges.getParameterCount();
    IParamValueQueue* queue = pendingChanges.addParameterData(id, index);
    if (pendingChanges.getParameterCount() == before) {
        // A second change in one block: applying the first ones now keeps the order.
        applyPendingChanges();
        queue = pendingChanges.addParameterData(id, index);
    }
    queue->addPoint(0, limited, index);
}

void Vst3Processor::applyPendingChanges()
{
    readParameterChanges(&pendingChanges);
    pendingChanges.clearQueue();
}

tresult PLUGIN_API Vst3Processor::notify(IMessage* message)
{
    const FIDString name = message ? message->getMessageID() : nullptr;
    const bool forState = name && FIDStringsEqual(name, kStateValuesMessage);
    if (!name || (!forState && !FIDStringsEqual(name, kValuesMessage)))
        return PitchNamesProcessor::notify(message);
    IAttributeList* const attributes = message->getAttributes();
    const void* bytes = nullptr;
    uint32 size = 0;
    double values[kPresetParamCount];
    if (!attributes || attributes->getBinary(kValuesAttribute, bytes, size) != kResultTrue || !bytes
        || size != sizeof values)
        return kResultFalse;
    std::memcpy(values, bytes, sizeof values);
    for (std::size_t id = 0; id < kPresetParamCount; ++id) {
        stateValues[id] = values[id];
        if (!forState)
            controllerValues.set(id, values[id]);
    }
    knowsValues = true;
    return kResultOk;
}

}  // namespace Vst
}  // namespace Steinberg
