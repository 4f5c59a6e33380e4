// A first-order low-pass that keeps the requested frequency: where a low sample rate limited it, a
// higher rate restores it.
#pragma once

#include "dsp/WetBiquadFilter.h"

class TrackedBiquadFilter : public WetBiquadFilter {
public:
    TrackedBiquadFilter(double sampleRate, double frequency)
        : WetBiquadFilter(sampleRate, FilterType::LowPass1, frequency, 1.0, 0.0),
          requestedFrequency(frequency)
    {
    }

    // Limited as in BiquadFilter; `requestedFrequency` is not.
    void setFrequency(double hz)
    {
        WetBiquadFilter::setFrequency(hz);
        requestedFrequency = hz;
    }

    void setSampleRate(double rate)
    {
        WetBiquadFilter::setSampleRate(rate);
        setFrequency(requestedFrequency);
    }

    // Settings
    double requestedFrequency;  // Hz, not limited
};
