// One second-order section in direct form I, designed from a response, a frequency, a Q and a gain.
// Beside its coefficients it keeps its zeros, poles and gain, so that it can glide to a new design
// in the pole-zero plane. The strips leave `instant` set: a new design then applies at once.
#pragma once

#include "dsp/FilterType.h"

#include <cmath>

class BiquadFilter {
public:
    // One value of the pole-zero description during a glide.
    struct Glide {
        double current = 0.0;
        double target = 0.0;
        double step = 0.0;  // per sample
    };
    struct Coefficients {
        double b0, b1, b2, a1, a2;
    };

    // Hz, Hz, dB, without limits. The filter starts disabled; a setter designs it.
    BiquadFilter(double sampleRate, FilterType type, double frequency, double q, double gainDb);

    void setSampleRate(double rate);  // Hz; outside 20000 to 400000: 44100. Keeps the frequency
    void setFrequency(double hz);     // limited to 0.001 Hz .. 0.499 of the rate
    void setQ(double quality);        // limited to 0.0001 .. 1000
    void setFrequencyAndQ(double hz, double quality);  // with one design
    void setEnabled(int on);           // 0 or 1; an unchanged value does not design again
    void setInstant(bool atOnce);      // also ends a running glide, whatever the value
    void setLimitDrive(double drive);  // 0 and less: no limiter
    void setLimitBias(double bias);
    void snapToTarget();  // ends a running glide at its target

    // In place. A disabled filter leaves the samples unchanged and clears its history.
    void process(double* buffer, int count);

    // The same for a single sample.
    double processSample(double x)
    {
        if (type == FilterType::None)
            return x;
        if (isOff()) {
            clearHistory();
            return x;
        }
        return step(x);
    }

    // Settings
    double sampleRate;  // Hz
    FilterType type;
    double frequency;  // Hz
    double q;
    double gainDb;  // shelves and bell only
    int enabled = 0;
    bool instant = true;
    double limitDrive = -1.0;
    double limitBias = 0.0;

    // Derived from the settings: a1, a2 and the b's are divided by the divisor kept in a0
    double a0 = 1.0, a1 = 0.0, a2 = 0.0, b0 = 1.0, b1 = 0.0, b2 = 0.0;
    Glide zero1Re{1.0, 1.0, 0.0}, zero1Im, zero2Re, zero2Im;
    Glide pole1Re, pole1Im, pole2Re, pole2Im;
    Glide rampGain{1.0, 1.0, 0.0};
    unsigned int rampLength;  // samples of a whole glide
    int limitEnabled = 0;
    double limitCeiling = 1000.0;
    double limitSlope = 0.001;

    // State of the signal
    int rampCount = 0;  // samples left of a running glide
    double x1 = 0.0, x2 = 0.0, y1 = 0.0, y2 = 0.0;

protected:
    // Whether another design from the same settings would change nothing; a glide would start anew.
    bool isDesigned() const { return everDesigned && instant; }
    bool isOff() const { return !enabled && rampCount == 0; }
    void clearHistory() { x1 = x2 = y1 = y2 = 0.0; }
    void redesign();
    double stepTo(double target, double current) const;

    // Filters one sample, also if the filter is disabled.
    double step(double x0)
    {
        const Coefficients k = rampCount == 0 ? Coefficients{b0, b1, b2, a1, a2} : glide();
        double y0 = k.b0 * x0 + k.b1 * x1 + k.b2 * x2 - k.a1 * y1 - k.a2 * y2;
        // Values far below 1e-36 become an exact 0, so that no denormal number is fed back.
        y0 += 1e-36;
        y0 -= 1e-36;
        const double out = y0;
        // After the output is taken: the limiter acts on the feedback only.
        if (limitEnabled)
            y0 = y0 / (limitSlope * std::fabs(y0 + limitBias) + 1.0);
        y2 = y1;
        y1 = y0;
        x2 = x1;
        x1 = x0;
        return out;
    }

private:
    bool everDesigned = false;

    void design(double hz, double quality);  // unless nothing would change
    void designCoefficients();
    void placePolesAndZeros();
    Coefficients glide();
};
