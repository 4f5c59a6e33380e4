// Vst2Wrapper: buses, rates, activation and the audio blocks.
#include "public.sdk/source/vst/vst2wrapper/vst2wrapper.h"

#include "pluginterfaces/base/ustring.h"
#include "pluginterfaces/vst/vstspeaker.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>

namespace Steinberg {
namespace Vst {

namespace {

// Samples of scratch for channels that a host leaves out, whatever its block size.
constexpr int32 kMinScratch = 64;

// Larger announced block sizes are ignored.
constexpr VstInt32 kMaxBlock = 1 << 20;

bool anyMissing(Sample32* const* channels, std::size_t count)
{
    if (!channels)
        return count > 0;
    return std::find(channels, channels + count, nullptr) != channels + count;
}

bool anyShared(Sample32* const* channels, std::size_t count)
{
    return channels && std::adjacent_find(channels, channels + count) != channels + count;
}

bool toVst3(VstInt32 type, SpeakerArrangement& arrangement)
{
    switch (type) {
    case kSpeakerArrMono:
        arrangement = SpeakerArr::kMono;
        return true;
    case kSpeakerArrStereo:
        arrangement = SpeakerArr::kStereo;
        return true;
    default:
        return false;
    }
}

}  // namespace

void Vst2Wrapper::BusBuffers::prepare(IComponent& owner, BusDirection direction)
{
    buses.clear();
    channels.clear();
    const int32 busCount = owner.getBusCount(kAudio, direction);
    for (int32 i = 0; i < busCount; ++i) {
        BusInfo info;
        AudioBusBuffers bus;
        if (owner.getBusInfo(kAudio, direction, i, info) == kResultTrue) {
            const bool isMain = info.busType == kMain;
            owner.activateBus(kAudio, direction, i, isMain);
            bus.numChannels = isMain ? info.channelCount : 0;
        }
        buses.push_back(bus);
        channels.insert(channels.end(), static_cast<std::size_t>(bus.numChannels), nullptr);
    }
    Sample32** next = channels.data();
    for (AudioBusBuffers& bus : buses) {
        bus.channelBuffers32 = next;
        next += bus.numChannels;
    }
}

// Adopts the component's buses and allocates one scratch buffer for each input and output channel.
void Vst2Wrapper::setupBuses()
{
    inputBuses.prepare(*component, kInput);
    outputBuses.prepare(*component, kOutput);
    cEffect.numInputs = static_cast<VstInt32>(inputBuses.channels.size());
    cEffect.numOutputs = static_cast<VstInt32>(outputBuses.channels.size());
    outputCount = cEffect.numOutputs;
    // All buffers have one length, also if memory runs out here: the old ones then stay.
    const std::size_t channels = inputBuses.channels.size() + outputBuses.channels.size();
    const int32 frames = std::max(kMinScratch, setup.maxSamplesPerBlock);
    scratch =
        std::vector<std::vector<Sample32>>(std::max(channels, scratch.size()),
                                           std::vector<Sample32>(static_cast<std::size_t>(frames)));
}

bool Vst2Wrapper::applySetup()
{
    return processor->setupProcessing(setup) == kResultOk;
}

// Updates the latency that hosts read; true if it has changed.
bool Vst2Wrapper::updateLatency()
{
    const auto latency = static_cast<VstInt32>(processor->getLatencySamples());
    if (cEffect.initialDelay == latency)
        return false;
    cEffect.initialDelay = latency;
    return true;
}

void Vst2Wrapper::activate()
{
    suspended = false;
    if (active)
        return;
    component->setActive(true);
    active = true;
}

void Vst2Wrapper::deactivate()
{
    setProcessing(false);
    if (!active)
        return;
    component->setActive(false);
    active = false;
}

void Vst2Wrapper::resume()
{
    bool newLatency = false;
    {
        const ProcessGate::Setup inside(gate);
        activate();
        newLatency = updateLatency();
    }
    if (newLatency)
        askHost(audioMasterIOChanged);
}

void Vst2Wrapper::suspend()
{
    const ProcessGate::Setup inside(gate);
    deactivate();
    suspended = true;
}

void Vst2Wrapper::startProcess()
{
    const ProcessGate::Setup inside(gate);
    setProcessing(true);
}

void Vst2Wrapper::stopProcess()
{
    const ProcessGate::Setup inside(gate);
    setProcessing(false);
}

void Vst2Wrapper::setProcessing(bool state)
{
    if (processing == state)
        return;
    processor->setProcessing(state);
    processing = state;
}

// A component accepts a new rate, block size or bus layout only while inactive, and knows the
// resulting latency only after the next activation. So an inactive component is activated briefly,
// as some hosts never activate. True if the latency has changed; the caller reports that to the
// host after it has left the gate.
template <typename Change>
bool Vst2Wrapper::changeSetup(Change change)
{
    const bool wasActive = active;
    deactivate();
    change();
    applySetup();
    component->setActive(true);
    if (!wasActive)
        component->setActive(false);
    active = wasActive;
    return updateLatency();
}

void Vst2Wrapper::setSampleRate(float hz)
{
    const auto rate = static_cast<double>(hz);
    if (!(rate > 0.0) || !(rate < 1e7))
        return;
    bool newLatency = false;
    {
        const ProcessGate::Setup inside(gate);
        if (rate != setup.sampleRate)
            newLatency = changeSetup([this, rate] { setup.sampleRate = rate; });
    }
    if (newLatency)
        askHost(audioMasterIOChanged);
}

void Vst2Wrapper::setBlockSize(VstInt32 frames)
{
    const ProcessGate::Setup inside(gate);
    if (frames > kMaxBlock || frames == setup.maxSamplesPerBlock)
        return;
    changeSetup([this, frames] {
        setup.maxSamplesPerBlock = frames;
        setupBuses();
    });
}

bool Vst2Wrapper::setProcessPrecision(VstInt32 precision)
{
    return precision == kVstProcessPrecision32;
}

bool Vst2Wrapper::setSpeakerArrangement(const VstSpeakerArrangement* input,
                                        const VstSpeakerArrangement* output)
{
    bool accepted = false, changed = false;
    {
        const ProcessGate::Setup inside(gate);
        SpeakerArrangement present[2] = {SpeakerArr::kEmpty, SpeakerArr::kEmpty};
        processor->getBusArrangement(kInput, 0, present[0]);
        processor->getBusArrangement(kOutput, 0, present[1]);
        SpeakerArrangement wanted[2] = {present[0], present[1]};
        if ((input && !toVst3(input->type, wanted[0]))
            || (output && !toVst3(output->type, wanted[1])))
            return false;
        if (wanted[0] == present[0] && wanted[1] == present[1])
            return true;

        // A refusal, too, may have changed the component's buses.
        const VstInt32 inputsBefore = cEffect.numInputs, outputsBefore = cEffect.numOutputs;
        changeSetup([&] {
            accepted = processor->setBusArrangements(&wanted[0], 1, &wanted[1], 1) == kResultTrue;
            setupBuses();
        });
        changed =
            accepted || cEffect.numInputs != inputsBefore || cEffect.numOutputs != outputsBefore;
    }
    if (changed)
        askHost(audioMasterIOChanged);
    return accepted;
}

bool Vst2Wrapper::fillArrangement(BusDirection direction, VstSpeakerArrangement& arrangement)
{
    struct NamedSpeaker {
        VstInt32 type;
        const char* name;
    };
    // VST 3 has other types of the same names.
    static constexpr NamedSpeaker kMonoSpeaker{::kSpeakerM, "M"};
    static constexpr NamedSpeaker kStereoSpeakers[] = {{::kSpeakerL, "L"}, {::kSpeakerR, "R"}};

    SpeakerArrangement present = SpeakerArr::kEmpty;
    if (processor->getBusArrangement(direction, 0, present) != kResultTrue)
        return false;
    const bool mono = present == SpeakerArr::kMono;
    if (!mono && present != SpeakerArr::kStereo)
        return false;

    arrangement = {};
    arrangement.type = mono ? kSpeakerArrMono : kSpeakerArrStereo;
    arrangement.numChannels = mono ? 1 : 2;
    const NamedSpeaker* speaker = mono ? &kMonoSpeaker : kStereoSpeakers;
    for (VstInt32 i = 0; i < arrangement.numChannels; ++i, ++speaker) {
        arrangement.speakers[i].type = speaker->type;
        std::snprintf(arrangement.speakers[i].name, sizeof arrangement.speakers[i].name, "%s",
                      speaker->name);
    }
    return true;
}

bool Vst2Wrapper::getSpeakerArrangement(VstSpeakerArrangement** input,
                                        VstSpeakerArrangement** output)
{
    if (!fillArrangement(kInput, inputArrangement) || !fillArrangement(kOutput, outputArrangement))
        return false;
    *input = &inputArrangement;
    *output = &outputArrangement;
    return true;
}

bool Vst2Wrapper::pinProperties(BusDirection direction, VstInt32 pin, VstPinProperties* properties)
{
    BusInfo info;
    if (component->getBusInfo(kAudio, direction, 0, info) != kResultTrue || pin < 0
        || pin >= info.channelCount)
        return false;
    // Some hosts' record ends before the reserved bytes.
    std::memset(properties, 0, offsetof(VstPinProperties, future));
    UString(info.name, 128).toAscii(properties->label, sizeof properties->label - 1);
    properties->flags = kVstPinIsActive | kVstPinUseSpeaker;
    properties->arrangementType = kSpeakerArrMono;
    if (info.channelCount == 2) {
        properties->flags |= kVstPinIsStereo;
        properties->arrangementType = kSpeakerArrStereo;
    }
    return true;
}

bool Vst2Wrapper::getInputProperties(VstInt32 pin, VstPinProperties* properties)
{
    return pinProperties(kInput, pin, properties);
}

bool Vst2Wrapper::getOutputProperties(VstInt32 pin, VstPinProperties* properties)
{
    return pinProperties(kOutput, pin, properties);
}

// Runs on the audio thread and never waits for another. Does not call the host, since the processor
// uses neither time information nor process mode.
void Vst2Wrapper::processReplacing(float** inputs, float** outputs, VstInt32 frames)
{
    const ProcessGate::Block inside(gate);
    if (inside)
        return processBlock(inputs, outputs, frames);
    for (VstInt32 i = 0; outputs && i < outputCount; ++i)
        if (outputs[i])
            std::fill_n(outputs[i], frames, 0.0f);
}

// Parameter changes go with the block's first slice. There are several slices only if scratch
// replaces missing channels and the block is longer than the scratch.
void Vst2Wrapper::processBlock(float** inputs, float** outputs, int32 frames)
{
    // For a host that never turns the mains on, the first block activates. A block after mains off,
    // from an audio thread that is late or from a host that does not turn them on again, is
    // processed without activation; the next activation resets the processor as usual.
    if (!active && !suspended)
        activate();
    if (active)
        setProcessing(true);
    for (const ParameterTransfer::Change& change : toProcessor->takeChanges()) {
        int32 index = 0;
        IParamValueQueue* queue =
            inputChanges.addParameterData(parameters[change.slot].info.id, index);
        queue->addPoint(0, currentValues[change.slot].load(), index);
    }

    const std::size_t inputCount = inputBuses.channels.size();
    const bool needsScratch = anyMissing(inputs, inputCount) || anyShared(inputs, inputCount)
        || anyMissing(outputs, outputBuses.channels.size());
    const int32 sliceLength =
        needsScratch ? std::min(frames, static_cast<int32>(scratch.front().size())) : frames;

    int32 offset = 0;
    do {
        const int32 count = std::min(sliceLength, frames - offset);
        processSlice(inputs, outputs, offset, count);
        offset += count;
    } while (offset < frames);
}

// A missing input is silent, a missing output is discarded. The processor may change its input
// buffers in place, so two inputs never share one.
void Vst2Wrapper::processSlice(Sample32** inputs, Sample32** outputs, int32 offset, int32 frames)
{
    const auto bytes = static_cast<std::size_t>(frames) * sizeof(Sample32);
    std::size_t spare = 0;
    for (std::size_t i = 0; i < inputBuses.channels.size(); ++i, ++spare) {
        Sample32* source = inputs && inputs[i] ? inputs[i] + offset : nullptr;
        Sample32* channel = scratch[spare].data();
        if (!source)
            std::memset(channel, 0, bytes);
        else if (i > 0 && inputs[i] == inputs[i - 1])
            std::memcpy(channel, source, bytes);
        else
            channel = source;
        inputBuses.channels[i] = channel;
    }
    for (std::size_t i = 0; i < outputBuses.channels.size(); ++i, ++spare)
        outputBuses.channels[i] =
            outputs && outputs[i] ? outputs[i] + offset : scratch[spare].data();

    ProcessData data;
    data.processMode = setup.processMode;
    data.numSamples = frames;
    data.numInputs = static_cast<int32>(inputBuses.buses.size());
    data.numOutputs = static_cast<int32>(outputBuses.buses.size());
    data.inputs = inputBuses.buses.data();
    data.outputs = outputBuses.buses.data();
    data.inputParameterChanges = &inputChanges;
    data.outputParameterChanges = &outputChanges;
    for (AudioBusBuffers& bus : inputBuses.buses)
        bus.silenceFlags = 0;
    for (AudioBusBuffers& bus : outputBuses.buses)
        bus.silenceFlags = 0;

    outputChanges.clearQueue();
    processor->process(data);
    inputChanges.clearQueue();

    for (int32 i = 0; i < outputChanges.getParameterCount(); ++i) {
        IParamValueQueue* queue = outputChanges.getParameterData(i);
        const ExportedParameter* parameter = parameterOf(queue->getParameterId());
        int32 sampleOffset = 0;
        ParamValue value = 0.0;
        if (parameter
            && queue->getPoint(queue->getPointCount() - 1, sampleOffset, value) == kResultTrue)
            fromProcessor->set(slotOf(*parameter), value);
    }
}

}  // namespace Vst
}  // namespace Steinberg
