// StripProcessorQB9: construction, sample rate and setters.
#include "dsp/StripProcessorQB9.h"

#include "dsp/ControlLaws.h"
#include "dsp/ElementaryFunctions.h"
#include "params/lookup/FrequencySteps.h"
#include "params/lookup/LookupStep.h"

StripProcessorQB9::StripProcessorQB9()
{
    compensation.fill(1.0);
}

void StripProcessorQB9::setSampleRate(double rate)
{
    sampleRate = rate;
    highPass.setSampleRate(rate);
    highPass.setInstant(true);
    boostBand.setSampleRate(rate);
    boostBand.setInstant(true);

    smoothingCoeff = 22.05000114440918 / sampleRate;  // a time constant of 45.35 ms at any rate
    outputGainCurrent = outputGainTarget;
    driveGainCurrent = driveGainTarget;
    driveMakeupCurrent = driveMakeupTarget;
    // Without driveMakeupTarget, on purpose: the input stage adds it from its first sample on.
    compensation.fill(1.0 / driveGainTarget);

    if (phaseChangePending) {
        inverted = inverted ? 0 : 1;
        phaseChangePending = 0;
    }
}

void StripProcessorQB9::setDrive(double v)
{
    const double db = levelDb(v);
    driveGainTarget = elementary::powerOfTen(db * 0.05);
    // 3.1 % of the drive in dB is not compensated.
    driveMakeupTarget = elementary::powerOfTen(db * 0.031 * 0.05);
}

void StripProcessorQB9::setHpf(double v)
{
    const double hz = lookupStep(kHighPassStepsHz, v);
    if (!(hz > 0.0)) {
        highPass.setEnabled(0);
        return;
    }
    highPass.setEnabled(1);
    highPass.setFrequency(hz);
    highPass.setQ(0.5);
}

void StripProcessorQB9::setOutput(double v)
{
    outputGainTarget = elementary::powerOfTen(levelDb(v) * 0.05);
}

// Switching off keeps the filter enabled; it is only no longer called.
void StripProcessorQB9::set28k(double v)
{
    const int on = switchValue(v);
    if (on == boostOn)
        return;
    boostOn = on;
    boostGain = elementary::powerOfTen(0.325);  // 6.5 dB
    if (boostBand.sampleRate != sampleRate)
        boostBand.setSampleRate(sampleRate);
    boostBand.setFrequency(28000.0);
    boostBand.setQ(0.6);
    boostBand.setEnabled(1);
    boostBand.setLimitBias(0.0);
    boostBand.setLimitDrive(0.0);
}

// Setting the present polarity again cancels a pending change.
void StripProcessorQB9::setPhase(double v)
{
    phaseChangePending = switchValue(v) == inverted ? 0 : 1;
}
