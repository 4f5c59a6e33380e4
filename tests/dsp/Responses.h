// Measuring a filter by its impulse response, and the closed formulas to hold the result against:
// analogue prototypes seen through the bilinear transform, not the code's coefficients.
#pragma once

#include "dsp/FilterType.h"

#include <cmath>
#include <complex>
#include <vector>

using Complex = std::complex<double>;

constexpr double kPi = 3.14159265358979323846;

template <class Filter>
std::vector<double> impulseResponse(Filter& filter, int length)
{
    std::vector<double> h(static_cast<std::size_t>(length), 0.0);
    h[0] = 1.0;
    filter.process(h.data(), length);
    return h;
}

inline Complex responseAt(const std::vector<double>& h, double hz, double rate)
{
    const Complex turn = std::polar(1.0, -2.0 * kPi * hz / rate);
    Complex z = 1.0, sum = 0.0;
    for (const double x : h) {
        sum += x * z;
        z *= turn;
    }
    return sum;
}

// The analogue frequency, in units of the corner, that the bilinear transform puts at hz.
inline Complex prototypeFrequency(double corner, double hz, double rate)
{
    return {0.0, std::tan(kPi * hz / rate) / std::tan(kPi * corner / rate)};
}

inline Complex highPass1At(double corner, double hz, double rate)
{
    const Complex s = prototypeFrequency(corner, hz, rate);
    return s / (s + 1.0);
}

// The one-pole low-pass that is 3 dB down at its corner: |H|^2 = 1 / (1 + sin^2(w/2) /
// sin^2(w0/2)), which the pole p = exp(-2 asinh(sin(w0/2))) fulfils.
inline Complex lowPass1At(double corner, double hz, double rate)
{
    const double pole = std::exp(-2.0 * std::asinh(std::sin(kPi * corner / rate)));
    return (1.0 - pole) / (1.0 - pole * std::polar(1.0, -2.0 * kPi * hz / rate));
}

// The responses that the strips use. Q falls towards half the rate, differently for each.
inline Complex analogueAt(FilterType type, double corner, double q, double hz, double rate)
{
    if (type == FilterType::HighPass1)
        return highPass1At(corner, hz, rate);
    if (type == FilterType::LowPass1)
        return lowPass1At(corner, hz, rate);
    const bool highPass = type == FilterType::HighPass2;
    const double narrowedQ = q * (1.0 - std::pow(corner / rate / 0.5001, highPass ? 6.0 : 2.8));
    const Complex s = prototypeFrequency(corner, hz, rate);
    return (highPass ? s * s : s / narrowedQ) / (s * s + s / narrowedQ + 1.0);
}

inline Complex blended(Complex h, double wet)
{
    return h * wet + (1.0 - wet);
}

inline bool isDenormal(double x)
{
    return std::fpclassify(x) == FP_SUBNORMAL;
}

// x + tiny - tiny, which the optimiser must not simplify.
inline double flushed(double x, double tiny)
{
    volatile double y = x;
    y = y + tiny;
    y = y - tiny;
    return y;
}
