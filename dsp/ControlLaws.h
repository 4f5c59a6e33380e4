// The laws from knob positions to levels, and related conversions.
#pragma once

#include "dsp/ElementaryFunctions.h"
#include "params/lookup/Truncate.h"

#include <algorithm>
#include <cmath>

// Knob positions run from 0 to 1, but hosts may send others: these are limited to -8 .. 8, which
// keeps every level finite; not-a-number counts as 0.
inline double finitePosition(double position)
{
    constexpr double kMax = 8.0;
    return std::isnan(position) ? 0.0 : std::clamp(position, -kMax, kMax);
}

// Band gains: -16 to +16 dB in steps of 0.25 dB, 0 dB at 0.5.
inline double bandGainDb(double position)
{
    return truncate(finitePosition(position) * 32.0 * 4.0 + 0.5) * 0.25 - 16.0;
}

// Drive and output levels: -16 to +16 dB in steps of 0.01 dB, 0 dB at 0.5. A position outside 0 to
// 1 gives a level beyond that, as it does in bandGainDb.
inline double levelDb(double position)
{
    return truncate(finitePosition(position) * 3200.0 + 0.5) * 0.01 - 16.0;
}

inline double decibelsToGain(double db)
{
    return elementary::powerOfTen(db / 20.0);
}

// The length of every gain and filter glide, 150 ms, in samples.
inline int glideSamples(double sampleRate)
{
    return std::max(0, truncate(sampleRate * 150.0 / 1000.0));
}

// Not-a-number becomes the lower limit.
inline double limited(double value, double lowest, double highest)
{
    if (!(value >= lowest))
        return lowest;
    return value > highest ? highest : value;
}
