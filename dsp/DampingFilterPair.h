// The treble loss of a strip: two first-order low-passes in series, with a corner far above the
// audible range, each blended in by half the amount.
#pragma once

#include "dsp/TrackedBiquadFilter.h"

class DampingFilterPair {
public:
    explicit DampingFilterPair(double sampleRate)
        : sampleRate(sampleRate), first(sampleRate, kCornerHz), second(sampleRate, kCornerHz)
    {
        first.setEnabled(1);
        second.setEnabled(1);
    }

    void setSampleRate(double rate)  // Hz; stored without limits, limited by the filters
    {
        sampleRate = rate;
        first.setSampleRate(rate);
        second.setSampleRate(rate);
    }

    void setAmount(float newAmount)  // half of it, limited to 0 .. 1, is each filter's blend
    {
        amount = static_cast<double>(newAmount);
        first.setWet(amount * 0.5);
        second.setWet(amount * 0.5);
    }

    void setInstant(bool atOnce)
    {
        first.setInstant(atOnce);
        second.setInstant(atOnce);
    }

    void process(double* buffer, int count)
    {
        first.process(buffer, count);
        second.process(buffer, count);
    }

    static constexpr double kCornerHz = 71355.0;

    double sampleRate;  // Hz
    double amount = 1.0;
    TrackedBiquadFilter first;
    TrackedBiquadFilter second;
};
