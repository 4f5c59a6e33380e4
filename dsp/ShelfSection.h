// A band as a shelf: a first-order filter followed by a second one of the same kind, the skirt,
// which is blended in to steepen the slope towards a neighbouring band.
#pragma once

#include "dsp/WetBiquadFilter.h"

class ShelfSection {
public:
    ShelfSection(double sampleRate, FilterType type);

    void setSampleRate(double rate);          // Hz; limited by the filters
    void setFrequency(double hz);             // limited by the filters
    void setSkirt(double mix, double ratio);  // mix limited to 0 .. 1; ratio of the frequencies
    void setAll(double hz, double mix, double ratio);  // with one design for each filter
    void setEnabled();                                 // a section cannot be disabled again
    void setInstant();
    void setLimitBias(double bias);
    void setLimitDrive(double drive);  // for the main filter; the skirt has no limiter

    void process(double* buffer, int count);

    double processSample(double x) { return skirt.processSample(main.processSample(x)); }

    // Settings
    double sampleRate;  // Hz
    FilterType type;
    double skirtMix = 0.0;
    double frequency = 120.0;  // Hz
    double skirtRatio = 1.0;

    // Set up from the settings
    BiquadFilter main;
    WetBiquadFilter skirt;

private:
    void update();
};
