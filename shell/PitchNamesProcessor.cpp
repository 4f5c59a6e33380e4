// PitchNamesProcessor: construction, rates, buses, and the processing of a block.
#include "shell/PitchNamesProcessor.h"

#include "params/ids/ClassIds.h"

#include "pluginterfaces/vst/vstspeaker.h"

#include <algorithm>
#include <iterator>
#include <new>

namespace Steinberg {
namespace Vst {

namespace {

constexpr int32 kOversampledLatency = 96;     // samples at the host's rate
constexpr double kNotOversampled = 176400.0;  // Hz, and higher rates

int countChannels(SpeakerArrangement arrangement)
{
    return SpeakerArr::getChannelCount(arrangement);
}

float toMilliseconds(int32 samples, double rate)
{
    return static_cast<float>(samples / rate * 1000.0);
}

}  // namespace

PitchNamesProcessor::PitchNamesProcessor(ProcessingForm processingForm)
    : eqStripL(new (std::nothrow) StripProcessorT46),
      eqStripR(new (std::nothrow) StripProcessorT46),
      preampStripL(new (std::nothrow) StripProcessorQB9),
      preampStripR(new (std::nothrow) StripProcessorQB9),
      eqStripL2(new (std::nothrow) StripProcessorT46),
      eqStripR2(new (std::nothrow) StripProcessorT46), workL{}, workR{},
      processingForm(processingForm), oversampling(processingForm),
      latencyMs(toMilliseconds(kOversampledLatency, 44100.0))
{
    updateStageSwitches();
    setControllerClass(kControllerId);
}

PitchNamesProcessor::~PitchNamesProcessor() = default;

tresult PLUGIN_API PitchNamesProcessor::initialize(FUnknown* context)
{
    const tresult result = AudioEffect::initialize(context);
    if (result != kResultOk)
        return result;
    addAudioInput(STR16("Stereo In"), SpeakerArr::kStereo);
    addAudioOutput(STR16("Stereo Out"), SpeakerArr::kStereo);
    return kResultOk;
}

tresult PLUGIN_API PitchNamesProcessor::setupProcessing(ProcessSetup& setup)
{
    processMode = setup.processMode;
    return AudioEffect::setupProcessing(setup);
}

tresult PLUGIN_API PitchNamesProcessor::setActive(TBool state)
{
    const double rate = processSetup.sampleRate;
    oversampleMode = rate < 88200.0 ? 2 : rate < kNotOversampled ? 1 : 0;
    oversampledRate = rate * (oversampleMode == 2 ? 4.0 : oversampleMode == 1 ? 2.0 : 1.0);

    for (StripProcessorT46* strip : {eqStripL.get(), eqStripR.get()})
        if (strip)
            strip->setSampleRate(oversampledRate);
    for (StripProcessorQB9* strip : {preampStripL.get(), preampStripR.get()})
        if (strip)
            strip->setSampleRate(oversampledRate);
    for (StripProcessorT46* strip : {eqStripL2.get(), eqStripR2.get()})
        if (strip)
            strip->setSampleRate(oversampledRate);

    phaseDoneForBlock = 0;
    std::fill(std::begin(workL), std::end(workL), 0.0);
    std::fill(std::begin(workR), std::end(workR), 0.0);
    oversampling.clear();

    latencySamples = latencyAt(rate);
    latencyMs = toMilliseconds(latencySamples, rate);
    return AudioEffect::setActive(state);
}

int32 PitchNamesProcessor::latencyAt(double rate)
{
    return rate < kNotOversampled ? kOversampledLatency : 0;
}

tresult PLUGIN_API PitchNamesProcessor::setBusArrangements(SpeakerArrangement* inputs, int32 numIns,
                                                           SpeakerArrangement* outputs,
                                                           int32 numOuts)
{
    if (numIns != 1 || numOuts != 1)
        return kResultFalse;
    const int channelsIn = countChannels(inputs[0]);
    const int channelsOut = countChannels(outputs[0]);
    const bool accepted =
        (channelsIn == 1 || channelsIn == 2) && channelsOut >= channelsIn && channelsOut <= 2;

    stereoIn = !accepted || channelsIn == 2;
    stereoOut = !accepted || channelsOut == 2;
    removeAudioBusses();
    addAudioInput(stereoIn ? STR16("Stereo In") : STR16("Mono In"),
                  accepted ? inputs[0] : SpeakerArr::kStereo);
    addAudioOutput(stereoOut ? STR16("Stereo Out") : STR16("Mono Out"),
                   accepted ? outputs[0] : SpeakerArr::kStereo);
    return accepted ? kResultTrue : kResultFalse;
}

uint32 PLUGIN_API PitchNamesProcessor::getLatencySamples()
{
    return static_cast<uint32>(latencySamples);
}

tresult PLUGIN_API PitchNamesProcessor::process(ProcessData& data)
{
    readParameterChanges(data.inputParameterChanges);
    if (data.numInputs == 0 || data.numOutputs == 0)
        return kResultOk;

    Sample32** inputs = data.inputs[0].channelBuffers32;
    Sample32** outputs = data.outputs[0].channelBuffers32;
    if (mayProcess()) {
        if (stereoOut)
            processStereo(inputs, outputs, data.numSamples);
        else
            processMono(inputs, outputs, data.numSamples);
    } else {
        if (stereoOut)
            passStereo(inputs, outputs, data.numSamples);
        else
            passMono(inputs, outputs, data.numSamples);
    }
    reportLatency(data.outputParameterChanges);
    return kResultOk;
}

}  // namespace Vst
}  // namespace Steinberg
