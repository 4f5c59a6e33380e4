#include "dsp/ShelfSection.h"

#include "dsp/ControlLaws.h"

ShelfSection::ShelfSection(double sampleRate, FilterType type)
    : sampleRate(sampleRate), type(type), main(sampleRate, type, 1000.0, 1.0, 0.0),
      skirt(sampleRate, type, 1000.0, 1.0, 0.0)
{
    update();
}

void ShelfSection::setSampleRate(double rate)
{
    sampleRate = rate;
    main.setSampleRate(rate);
    skirt.setSampleRate(rate);
}

void ShelfSection::setFrequency(double hz)
{
    frequency = hz;
    update();
}

void ShelfSection::setSkirt(double mix, double ratio)
{
    setAll(frequency, mix, ratio);
}

void ShelfSection::setAll(double hz, double mix, double ratio)
{
    frequency = hz;
    skirtMix = limited(mix, 0.0, 1.0);
    skirtRatio = ratio;
    update();
}

void ShelfSection::setEnabled()
{
    main.setEnabled(1);
    skirt.setEnabled(1);
}

void ShelfSection::setInstant()
{
    main.setInstant(true);
    skirt.setInstant(true);
}

void ShelfSection::setLimitBias(double bias)
{
    main.setLimitBias(bias);
    skirt.setLimitBias(bias);
}

void ShelfSection::setLimitDrive(double drive)
{
    main.setLimitDrive(drive);
    skirt.setLimitDrive(0.0);
}

void ShelfSection::process(double* buffer, int count)
{
    main.process(buffer, count);
    skirt.process(buffer, count);
}

void ShelfSection::update()
{
    // The skirt is limited to two octaves below 0.127 times and above 7.87 times the frequency.
    const double lowest = frequency * 0.127 * 0.25;
    const double highest = frequency * 7.87 * 4.0;
    double skirtHz = frequency * skirtRatio;
    if (skirtHz < lowest)
        skirtHz = lowest;
    if (skirtHz > highest)
        skirtHz = highest;
    main.setFrequency(frequency);
    skirt.setFrequency(skirtHz);
    skirt.setWet(skirtMix);
}
