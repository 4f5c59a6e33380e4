// The top-end loss of a strip: two first-order low-passes far above the audible range in a row,
// each blended in by half the amount.
#pragma once

#include "dsp/TrackedBiquadFilter.h"

class DampingFilterPair {
public:
    explicit DampingFilterPair(double rate)
        : sampleRate(rate), first(rate, kCornerHz), second(rate, kCornerHz)
    {
        first.setEnabled(1);
        second.setEnabled(1);
    }

    void setSampleRate(double rate)  // Hz; kept here without limits, limited by the filters
    {
        sampleRate = rate;
        first.setSampleRate(rate);
        second.setSampleRate(rate);
    }

    void setAmount(float newAmount)  // the filters limit half of it to 0 .. 1
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
