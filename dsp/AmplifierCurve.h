// The amplifier's curve: a slightly asymmetric, soft compression, folded over a knee at 2.8 and a
// straight line from 7.0 up.
#pragma once

#include <cmath>

constexpr double kAmplifierKnee = 2.8;

// x / (slope * |x + bias| + 1). The bias makes positive and negative peaks differ.
inline double shapeAmplifier(double x, double slope, double bias)
{
    constexpr double kStraight = 7.0;
    const double v = x / (slope * std::fabs(x + bias) + 1.0);
    double a = std::fabs(v);
    if (!(a > kAmplifierKnee))
        return v;
    // The exponent freezes at 4.2 = 7.0 - 2.8.
    a = (a - kAmplifierKnee) * std::pow(0.8, a < kStraight ? a - kAmplifierKnee : 4.2)
        + kAmplifierKnee;
    return std::copysign(a, v);
}
