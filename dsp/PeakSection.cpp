#include "dsp/PeakSection.h"

#include "dsp/ControlLaws.h"

PeakSection::PeakSection(double sampleRate, FilterType type)
    : sampleRate(sampleRate), type(type), main(sampleRate, type, 1000.0, 1.0, 0.0),
      highSkirt(sampleRate, FilterType::HighPass1, 1000.0, 1.0, 0.0),
      lowSkirt(sampleRate, FilterType::LowPass1, 1000.0, 1.0, 0.0)
{
    update();
}

void PeakSection::setSampleRate(double rate)
{
    sampleRate = rate;
    main.setSampleRate(rate);
    highSkirt.setSampleRate(rate);
    lowSkirt.setSampleRate(rate);
}

void PeakSection::setFrequency(double hz)
{
    frequency = hz;
    update();
}

void PeakSection::setQ(double quality)
{
    q = quality;
    update();
}

void PeakSection::setHighSkirt(double mix, double ratio)
{
    setAll(frequency, q, mix, ratio, lowSkirtMix, lowSkirtRatio);
}

void PeakSection::setLowSkirt(double mix, double ratio)
{
    setAll(frequency, q, highSkirtMix, highSkirtRatio, mix, ratio);
}

void PeakSection::setAll(double hz, double quality, double highMix, double highRatio, double lowMix,
                         double lowRatio)
{
    frequency = hz;
    q = quality;
    highSkirtMix = limited(highMix, 0.0, 1.0);
    highSkirtRatio = highRatio < 1.0 ? 1.0 : highRatio;
    lowSkirtMix = limited(lowMix, 0.0, 1.0);
    lowSkirtRatio = lowRatio > 1.0 ? 1.0 : lowRatio;
    update();
}

void PeakSection::setEnabled()
{
    main.setEnabled(1);
    highSkirt.setEnabled(1);
    lowSkirt.setEnabled(1);
}

void PeakSection::setInstant()
{
    main.setInstant(true);
    highSkirt.setInstant(true);
    lowSkirt.setInstant(true);
}

void PeakSection::setLimitBias(double bias)
{
    main.setLimitBias(bias);
    highSkirt.setLimitBias(bias);
    lowSkirt.setLimitBias(bias);
}

void PeakSection::setLimitDrive(double drive)
{
    main.setLimitDrive(drive);
    highSkirt.setLimitDrive(0.0);
    lowSkirt.setLimitDrive(0.0);
}

void PeakSection::process(double* buffer, int count)
{
    main.process(buffer, count);
    lowSkirt.process(buffer, count);
    highSkirt.process(buffer, count);
}

void PeakSection::update()
{
    // Half-power edges of a band-pass: their product is frequency^2, their distance frequency / q.
    const double u = std::sqrt(1.0 + 1.0 / (4.0 * q * q));
    const double lowerEdge = frequency * (u - 1.0 / (2.0 * q));
    const double upperEdge = frequency / q + lowerEdge;
    double highSkirtHz = lowerEdge;
    double lowSkirtHz = upperEdge;
    if (!edgesOnly) {
        highSkirtHz = lowerEdge * highSkirtRatio;
        lowSkirtHz = upperEdge * lowSkirtRatio;
        if (lowerEdge * 0.25 > lowSkirtHz)
            lowSkirtHz = lowerEdge * 0.25;
        if (highSkirtHz > upperEdge * 4.0)
            highSkirtHz = upperEdge * 4.0;
    }
    main.setFrequencyAndQ(frequency, q);
    highSkirt.setFrequency(highSkirtHz);
    lowSkirt.setFrequency(lowSkirtHz);
    highSkirt.setWet(highSkirtMix);
    lowSkirt.setWet(lowSkirtMix);
}
