// How parameter changes reach the processor's switches and the strips' setters, and how the latency
// goes back. Of each parameter only the last value of a block counts, from the block's first sample
// on.
#include "PitchNamesProcessor.h"

#include "ParameterIds.h"
#include "Truncate.h"

#include "pluginterfaces/vst/ivstparameterchanges.h"

namespace Steinberg {
namespace Vst {

namespace {

// The nine parameters of an equaliser strip, counted from its `Proc`.
void setStripParameter(StripProcessorT46* strip, ParamID place, double value)
{
    if (!strip)
        return;
    switch (place) {
    case 0:
        return strip->setProcessOn(static_cast<float>(value));
    case 1:
        return strip->setLowShelf(value);
    case 2:
        return strip->setLowFrequency(value);
    case 3:
        return strip->setLowGain(value);
    case 4:
        return strip->setMidFrequency(value);
    case 5:
        return strip->setMidGain(value);
    case 6:
        return strip->setHighShelf(value);
    case 7:
        return strip->setHighFrequency(value);
    case 8:
        return strip->setHighGain(value);
    }
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
    // From here on, even numbers are left and odd ones right.
    const bool isLeft = id % 2 == 0;
    StripProcessorQB9* const preamp = isLeft ? preampStripL.get() : preampStripR.get();

    switch (id) {
    case kPower:
        powerOn = switchValue(value);
        return;
    case kBpsCh1:
        channel1Active = 1 - switchValue(value);
        return;
    case kBpsCh2:
        channel2Active = 1 - switchValue(value);
        return;
    case kChannel:
        channelMode = truncate(value * 4.0 + 0.5);
        return;
    case kMS:
        midSideOn = switchValue(value);
        return;
    case kQB11:
        preampOn = switchValue(value);
        return updateStageSwitches();
    case k2x:
        secondaryOn = switchValue(value);
        return updateStageSwitches();

    case kDriveL:
    case kDriveR:
        if (preamp)
            preamp->setDrive(value);
        return;
    case kHpfL:
    case kHpfR:
        if (preamp)
            preamp->setHpf(value);
        return;
    case kOutputL:
    case kOutputR:
        if (preamp)
            preamp->setOutput(value);
        return;
    case k28kL:
    case k28kR:
        if (preamp)
            preamp->set28k(value);
        return;
    case kPhaseL:
    case kPhaseR:
        if (preamp)
            preamp->setPhase(value);
        return;

    // The left and right parameters of these two pairs work one switch: the last to arrive wins.
    case kTrfoDsL:
    case kTrfoDsR:
        transformerDisable = switchValue(value);
        return updateStageSwitches();
    case kAmpDsbL:
    case kAmpDsbR:
        ampDisable = switchValue(value);
        return updateStageSwitches();
    }

    if (id >= kProcL && id <= kHGainR)
        setStripParameter(isLeft ? eqStripL.get() : eqStripR.get(), (id - kProcL) / 2, value);
    else if (id >= kProcL2 && id <= kHGainR2)
        setStripParameter(isLeft ? eqStripL2.get() : eqStripR2.get(), (id - kProcL2) / 2, value);
}

// The chain of one channel holds one input and one output transformer, at its two ends: with two
// strips the first one has the input transformer and the second one the output transformer. The
// disable switches count only while the pre-amplifier is on.
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

// Sent with each of the first nine blocks, since a host may not listen from the start. A latency
// that changes later never equals the reported one again and goes out with every block.
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
