// StripProcessorT46: the audio path, stage by stage.
#include "dsp/AmplifierCurve.h"
#include "dsp/StripProcessorT46.h"
#include "dsp/TransformerCurve.h"

void StripProcessorT46::process(double* buffer, int count)
{
    if (count <= 0)
        return;
    if (inputTransformerOn)
        processInputTransformer(buffer, count);
    dcBlock.process(buffer, count);
    damping.process(buffer, count);
    if (processOn)
        processBands(buffer, count);
    if (ampOn)
        processAmp(buffer, count);
    if (outputTransformerOn)
        processOutputTransformer(buffer, count);
}

// Only the part of the signal below 50 Hz passes through the curve.
void StripProcessorT46::processInputTransformer(double* buffer, int count)
{
    for (int i = 0; i < count; ++i) {
        const double l = inputLowPass.processSample(buffer[i]);
        const double h = inputHighPass.processSample(buffer[i]);
        buffer[i] = shapeTransformer(l) + h;
    }
}

void StripProcessorT46::processBands(double* buffer, int count)
{
    const bool possible = isPossibleBandMode(bandMode);
    const bool anyBand = bandMode != kNoBands && bandMode != kBandsOff;
    for (int i = 0; i < count; ++i) {
        stepGains();
        if (!possible)
            buffer[i] = 0.0;
        else if (anyBand)  // with no band there is no output gain either
            buffer[i] = processBandsOf(bandMode, buffer[i]) * outputGain;
    }
}

// Always the high band first, then the mid band, then the low band.
double StripProcessorT46::processBandsOf(int mode, double x)
{
    if (mode & kHighShelfBand)
        x = x - highShelf.processSample(x) * (1.0 - highGain);
    if (mode & kHighBellBand)
        x = x - highBell.processSample(x) * (1.0 - highGain);
    if (mode & kMidBellBand)
        x = x - midBell.processSample(x) * (1.0 - midGain);
    if (mode & kLowShelfBand)
        x = x - lowShelf.processSample(x) * (1.0 - lowGain);
    if (mode & kLowBellBand)
        x = x - lowBell.processSample(x) * (1.0 - lowGain);
    return x;
}

void StripProcessorT46::processAmp(double* buffer, int count)
{
    for (int i = 0; i < count; ++i)
        buffer[i] = shapeAmplifier(buffer[i], ampSlope, ampBias);
}

// As the input transformer, but 26 dB further below the knee and split at 30 Hz; both on purpose.
void StripProcessorT46::processOutputTransformer(double* buffer, int count)
{
    for (int i = 0; i < count; ++i) {
        const double x = buffer[i] * 0.05;
        const double l = outputLowPass.processSample(x);
        const double h = outputHighPass.processSample(x);
        buffer[i] = (shapeTransformer(l) + h) * 20.0;
    }
}
