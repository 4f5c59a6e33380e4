// A BiquadFilter whose output is blended with its input. The blend does not affect the recursion:
// the filter also runs while the blend is 0.
#pragma once

#include "dsp/BiquadFilter.h"

class WetBiquadFilter : public BiquadFilter {
public:
    using BiquadFilter::BiquadFilter;

    void setWet(double wet);  // 0 is the input alone, 1 the filter alone; limited to that range

    void process(double* buffer, int count);

    double processSample(double x)
    {
        if (type == FilterType::None)
            return x;
        if (isOff()) {
            clearHistory();
            return x;
        }
        return stepWet(x);
    }

    // Settings
    double wetTarget = 0.0;

    // Derived from the settings
    double wetStep = 0.0;

    // State of the signal
    double wetCurrent = 0.0;

private:
    double stepWet(double x0)
    {
        wetCurrent = rampCount == 0 ? wetTarget : wetCurrent + wetStep;
        const double y0 = step(x0);
        return y0 * wetCurrent + x0 * (1.0 - wetCurrent);
    }
};
