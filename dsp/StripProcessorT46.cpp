// StripProcessorT46: construction, sample rate and setters.
#include "dsp/StripProcessorT46.h"

#include "params/lookup/FrequencySteps.h"
#include "params/lookup/LookupStep.h"

StripProcessorT46::StripProcessorT46()
{
    inputLowPass.setEnabled(1);
    inputHighPass.setEnabled(1);
    outputLowPass.setEnabled(1);
    outputHighPass.setEnabled(1);
    configureAmp();
    updateFixedFilters();
    update();
}

void StripProcessorT46::setSampleRate(double rate)
{
    sampleRate = rate;
    for (BiquadFilter* filter : {&inputLowPass, &inputHighPass, &outputLowPass, &outputHighPass}) {
        filter->setInstant(true);
        filter->setSampleRate(rate);
        filter->setEnabled(1);
    }
    lowShelf.setInstant();
    highShelf.setInstant();
    midBell.setInstant();
    highBell.setInstant();
    lowBell.setInstant();
    dcBlock.setInstant(true);
    damping.setInstant(true);
    update();

    // No glide across a change of rate.
    outputGain = outputGainTarget;
    lowGain = lowGainTarget;
    midGain = midGainTarget;
    highGain = highGainTarget;
    gainRampLength = glideSamples(sampleRate);
    gainRampCount = 0;
    lowGainStep = midGainStep = highGainStep = outputGainStep = 0.0;
}

// The slope is that of the filters' feedback limiter, 1 / ceiling, for drive 0.007, a rate ratio of
// 0.459375, 1000 Hz and a Q of 0.01: 0.007 * 0.459375 * 3 * 1000 * 0.01 / 0.01^0.75 / 1000. It is
// the same at every rate.
void StripProcessorT46::configureAmp()
{
    ampBias = 0.25;
    ampSlope = 0.0030506097302936833;
}

void StripProcessorT46::updateFixedFilters()
{
    if (dcBlock.sampleRate != sampleRate)
        dcBlock.setSampleRate(sampleRate);
    dcBlock.setEnabled(1);
    dcBlock.setFrequency(5.0);
    if (damping.sampleRate != sampleRate)
        damping.setSampleRate(sampleRate);
    damping.setAmount(static_cast<float>(dampingAmount));
}

void StripProcessorT46::setProcessOn(float x)
{
    processOn = switchValue(static_cast<double>(x));
    settingChanged();
}

// The low shelf exists from 63 to 300 Hz only, on purpose; at other steps the band is a bell,
// whatever the position of the switch. For a band that is off the last step counts.
void StripProcessorT46::applyShelfRule()
{
    lowShelfActive =
        lowShelfRequested && lowFrequency >= kMinShelfHz && lowFrequency <= kMaxShelfHz ? 1 : 0;
}

void StripProcessorT46::setLowShelf(double x)
{
    lowShelfRequested = switchValue(x);
    applyShelfRule();
    settingChanged();
}

void StripProcessorT46::setLowFrequency(double x)
{
    const double hz = lookupStep(kLowStepsHz, x);
    lowOn = hz > 0.0 ? 1 : 0;
    if (lowOn)
        lowFrequency = hz;  // the step "Off" keeps the last frequency
    if (lowShelfRequested)
        applyShelfRule();
    settingChanged();
}

void StripProcessorT46::setLowGain(double x)
{
    lowGainDb = bandGainDb(x);
    lowGainNormal = x;
    settingChanged();
}

void StripProcessorT46::setMidFrequency(double x)
{
    const double hz = lookupStep(kMidStepsHz, x);
    midOn = hz > 0.0 ? 1 : 0;
    if (midOn)
        midFrequency = hz;
    settingChanged();
}

void StripProcessorT46::setMidGain(double x)
{
    midGainDb = bandGainDb(x);
    midGainNormal = x;
    settingChanged();
}

void StripProcessorT46::setHighShelf(double x)
{
    highShelfOn = switchValue(x);
    settingChanged();
}

void StripProcessorT46::setHighFrequency(double x)
{
    const double hz = lookupStep(kHighStepsHz, x);
    highOn = hz > 0.0 ? 1 : 0;
    if (highOn)
        highFrequency = hz;
    settingChanged();
}

void StripProcessorT46::setHighGain(double x)
{
    highGainDb = bandGainDb(x);
    highGainNormal = x;
    settingChanged();
}

void StripProcessorT46::setInputTransformerDisable(double x)
{
    inputTransformerOn = 1 - switchValue(x);
}

void StripProcessorT46::setOutputTransformerDisable(double x)
{
    outputTransformerOn = 1 - switchValue(x);
}

void StripProcessorT46::setAmpDisable(double x)
{
    ampOn = 1 - switchValue(x);
    sectionLimitDrive = 0.0;
    configureAmp();
    settingChanged();
}

void StripProcessorT46::holdUpdates()
{
    updatesHeld = true;
}

void StripProcessorT46::releaseUpdates()
{
    updatesHeld = false;
    if (updatePending)
        update();
}

void StripProcessorT46::settingChanged()
{
    if (updatesHeld)
        updatePending = true;
    else
        update();
}
