// A band as a bell: a band-pass followed by two skirts, a first-order low-pass at its upper edge
// and a first-order high-pass at its lower edge, blended in to steepen the slope towards a
// neighbouring band.
#pragma once

#include "dsp/WetBiquadFilter.h"

class PeakSection {
public:
    PeakSection(double sampleRate, FilterType type);

    void setSampleRate(double rate);  // Hz; limited by the filters
    void setFrequency(double hz);     // limited by the filters
    void setQ(double quality);        // limited by the filters
    // Mixes are limited to 0 .. 1. A ratio moves its skirt away from the band edge, towards the
    // centre: at least 1 for the high-pass, at most 1 for the low-pass.
    void setHighSkirt(double mix, double ratio);
    void setLowSkirt(double mix, double ratio);
    void setAll(double hz, double quality, double highMix, double highRatio, double lowMix,
                double lowRatio);  // of the above, with one design for each filter
    void setEnabled();             // a section cannot be disabled again
    void setInstant();
    void setLimitBias(double bias);
    void setLimitDrive(double drive);  // for the main filter; the skirts have no limiter

    void process(double* buffer, int count);

    double processSample(double x)
    {
        return highSkirt.processSample(lowSkirt.processSample(main.processSample(x)));
    }

    // Settings
    double sampleRate;  // Hz
    FilterType type;    // of the main filter
    double highSkirtMix = 0.0, lowSkirtMix = 0.0;
    double highSkirtRatio = 1.0, lowSkirtRatio = 1.0;
    double frequency = 120.0;  // Hz
    double q = 1.0;
    bool edgesOnly = false;  // skirts at the band edges, whatever the ratios

    // Set up from the settings
    BiquadFilter main;
    WetBiquadFilter highSkirt;
    WetBiquadFilter lowSkirt;

private:
    void update();
};
