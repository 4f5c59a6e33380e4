// A first-order low-pass that remembers the frequency it was asked for: one that a low sample rate
// cut short comes back at a higher rate.
#pragma once

#include "dsp/WetBiquadFilter.h"

class TrackedBiquadFilter : public WetBiquadFilter {
public:
    TrackedBiquadFilter(double rate, double hz)
        : WetBiquadFilter(rate, FilterType::LowPass1, hz, 1.0, 0.0), requestedFrequency(hz)
    {
    }

    // Limited as in BiquadFilter; the request is kept as it came.
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

    // Asked for
    double requestedFrequency;  // Hz, not limited
};
