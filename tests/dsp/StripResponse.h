// The response that a strip must have in each of the worked combinations, put together from the
// closed formulas of its filters.
#pragma once

#include "Responses.h"
#include "WorkedValues.h"

#include <algorithm>
#include <array>

constexpr std::array<double, 10> kLow{-1, 550, 430, 370, 300, 200, 120, 82, 63, 33};
constexpr std::array<double, 10> kMid{-1, 5600, 4600, 3800, 3000, 2500, 1800, 1200, 800, 680};
constexpr std::array<double, 10> kHigh{-1,    28000, 24000, 20000, 17500,
                                       14000, 12000, 10000, 8200,  6800};

inline double gain(double db)
{
    return std::pow(10.0, db / 20.0);
}

inline double knob(double db)
{
    return (db + 16.0) / 32.0;
}

inline double stepPosition(const std::array<double, 10>& table, double hz)
{
    for (std::size_t i = 1; i < table.size(); ++i)
        if (table[i] == hz)
            return static_cast<double>(i) / 9.0;
    return 0.0;
}

inline Complex shelfAt(const BandCase& c, FilterType type, double hz, double rate)
{
    const double highest = c.frequency * 31.48, lowest = c.frequency * 0.03175;
    const double skirtHz =
        std::min(std::clamp(c.frequency * c.lowRatio, lowest, highest), 0.499 * rate);
    return analogueAt(type, std::min(c.frequency, 0.499 * rate), 1.0, 0.0, hz, rate)
        * blended(analogueAt(type, skirtHz, 1.0, 0.0, hz, rate), c.lowMix);
}

inline Complex bellAt(const BandCase& c, double hz, double rate)
{
    // Half-power edges: the roots of e^2 +- e * f / q - f^2.
    const double half = c.frequency / (2.0 * c.q);
    const double root = std::sqrt(half * half + c.frequency * c.frequency);
    const double lower = root - half, upper = root + half, top = 0.499 * rate;
    const double highHz = std::min({lower * c.highRatio, upper * 4.0, top});
    const double lowHz = std::min(std::max(upper * c.lowRatio, lower * 0.25), top);
    return analogueAt(FilterType::BandPass, std::min(c.frequency, top), c.q, 0.0, hz, rate)
        * blended(highPass1At(highHz, hz, rate), c.highMix)
        * blended(lowPass1At(lowHz, hz, rate), c.lowMix);
}

// x - f * (1 - G) for each band in turn, between the fixed filters.
inline Complex stripAt(const UpdateCase& c, double hz, double rate)
{
    Complex h = highPass1At(5.0, hz, rate) * c.outputGain;
    const Complex top = blended(lowPass1At(std::min(71355.0, 0.499 * rate), hz, rate),
                                std::min(c.damping * 0.5, 1.0));
    h *= top * top;
    if (c.low.stepHz > 0.0)
        h *= 1.0
            - (c.bandMode & 1 ? shelfAt(c.low, FilterType::LowPass1, hz, rate)
                              : bellAt(c.low, hz, rate))
                * (1.0 - gain(c.low.gainDb));
    if (c.mid.stepHz > 0.0)
        h *= 1.0 - bellAt(c.mid, hz, rate) * (1.0 - gain(c.mid.gainDb));
    if (c.high.stepHz > 0.0)
        h *= 1.0
            - (c.bandMode & 2 ? shelfAt(c.high, FilterType::HighPass1, hz, rate)
                              : bellAt(c.high, hz, rate))
                * (1.0 - gain(c.high.gainDb));
    return h;
}
