// PitchNamesProcessor: applies parameter changes to its switches and to the strips, and reports the
// latency. Of each parameter only the last value in a block counts, from the block's first sample
// on.
#include "shell/PitchNamesProcessor.h"

#include "params/ids/ParameterTraits.h"
#include "params/lookup/Truncate.h"

#include "pluginterfaces/vst/ivstparameterchanges.h"

namespace Steinberg {
namespace Vst {

namespace {

// `strip` is null if memory ran out.
template <class Strip>
void set(Strip* strip, void (Strip::*setter)(double), double value)
{
    if (strip)
        (strip->*setter)(value);
}

}  // namespace

void PitchNamesProcessor::readParameterChanges(IParameterChanges* changes)
{
    if (!changes)
        return;
    const int32 count = changes->getParameterCount();
    if (count == 0)
        return;
    StripProcessorT46* const strips[] = {eqStripL.get(), eqStripR.get(), eqStripL2.get(),
                                         eqStripR2.get()};
    for (StripProcessorT46* strip : strips)
        if (strip)
            strip->holdUpdates();
    for (int32 i = 0; i < count; ++i) {
        IParamValueQueue* queue = changes->getParameterData(i);
        if (!queue || queue->getPointCount() < 1)
            continue;
        int32 sampleOffset = 0;
        ParamValue value = 0.0;
        if (queue->getPoint(queue->getPointCount() - 1, sampleOffset, value) == kResultTrue)
            applyParameter(queue->getParameterId(), value);
    }
    for (StripProcessorT46* strip : strips)
        if (strip)
            strip->releaseUpdates();
}

void PitchNamesProcessor::applyParameter(ParamID id, ParamValue value)
{
    using param::Control;
    if (id >= kPresetParamCount)
        return;
    const param::Traits& traits = param::traitsOf(id);
    const bool isLeft = traits.side == param::Side::Left;
    StripProcessorQB9* const preamp = isLeft ? preampStripL.get() : preampStripR.get();
    StripProcessorT46* const equaliser = traits.strip == param::Strip::Secondary
        ? (isLeft ? eqStripL2.get() : eqStripR2.get())
        : (isLeft ? eqStripL.get() : eqStripR.get());

    switch (traits.control) {
    case Control::Power:
        powerOn = switchValue(value);
        return;
    case Control::BypassLeft:
        channel1Active = 1 - switchValue(value);
        return;
    case Control::BypassRight:
        channel2Active = 1 - switchValue(value);
        return;
    case Control::Channel:
        channelMode = truncate(value * 4.0 + 0.5);
        return;
    case Control::MidSide:
        midSideOn = switchValue(value);
        return;
    case Control::Preamps:
        preampOn = switchValue(value);
        return updateStageSwitches();
    case Control::SecondaryStrips:
        secondaryOn = switchValue(value);
        return updateStageSwitches();
    case Control::Link:  // used by the editor only
        return;

    case Control::Drive:
        return set(preamp, &StripProcessorQB9::setDrive, value);
    case Control::HighPass:
        return set(preamp, &StripProcessorQB9::setHpf, value);
    case Control::Output:
        return set(preamp, &StripProcessorQB9::setOutput, value);
    case Control::Boost28k:
        return set(preamp, &StripProcessorQB9::set28k, value);
    case Control::Phase:
        return set(preamp, &StripProcessorQB9::setPhase, value);
    // The left and right parameters of these two pairs set the same switch: the last change counts.
    case Control::Transformer:
        transformerDisable = switchValue(value);
        return updateStageSwitches();
    case Control::Amplifier:
        ampDisable = switchValue(value);
        return updateStageSwitches();

    case Control::Process:
        if (equaliser)
            equaliser->setProcessOn(static_cast<float>(value));
        return;
    case Control::LowShelf:
        return set(equaliser, &StripProcessorT46::setLowShelf, value);
    case Control::LowFrequency:
        return set(equaliser, &StripProcessorT46::setLowFrequency, value);
    case Control::LowGain:
        return set(equaliser, &StripProcessorT46::setLowGain, value);
    case Control::MidFrequency:
        return set(equaliser, &StripProcessorT46::setMidFrequency, value);
    case Control::MidGain:
        return set(equaliser, &StripProcessorT46::setMidGain, value);
    case Control::HighShelf:
        return set(equaliser, &StripProcessorT46::setHighShelf, value);
    case Control::HighFrequency:
        return set(equaliser, &StripProcessorT46::setHighFrequency, value);
    case Control::HighGain:
        return set(equaliser, &StripProcessorT46::setHighGain, value);
    }
}

// The chain of one channel has one input transformer, in its first strip, and one output
// transformer, in its last one. The disable switches count only while the pre-amplifier is on.
void PitchNamesProcessor::updateStageSwitches()
{
    const double off = 1.0;
    const double transformer = preampOn ? transformerDisable : 0.0;
    const double amp = preampOn ? ampDisable : 0.0;

    for (StripProcessorT46* strip : {eqStripL.get(), eqStripR.get()}) {
        if (!strip)
            continue;
        strip->setInputTransformerDisable(transformer);
        strip->setOutputTransformerDisable(secondaryOn ? off : transformer);
    }
    for (StripProcessorT46* strip : {eqStripL2.get(), eqStripR2.get()}) {
        if (!strip)
            continue;
        strip->setInputTransformerDisable(off);
        strip->setOutputTransformerDisable(secondaryOn ? transformer : off);
    }
    for (StripProcessorT46* strip :
         {eqStripL.get(), eqStripR.get(), eqStripL2.get(), eqStripR2.get()})
        if (strip)
            strip->setAmpDisable(amp);
}

// Reported with each of the first nine blocks, since a host may ignore the first ones. A latency
// that changes later is reported with every block, because reportedLatencyMs then stays as it is.
void PitchNamesProcessor::reportLatency(IParameterChanges* outputChanges)
{
    if (!outputChanges || latencyMs == reportedLatencyMs)
        return;
    int32 index = 0;
    const ParamID id = kLatency;
    if (IParamValueQueue* queue = outputChanges->addParameterData(id, index))
        queue->addPoint(0, static_cast<double>(latencyMs) * 0.001, index);
    if (reportedLatencyMs <= -1.0f)
        reportedLatencyMs -= 1.0f;
    if (reportedLatencyMs <= -10.0f)
        reportedLatencyMs = latencyMs;
}

}  // namespace Vst
}  // namespace Steinberg
