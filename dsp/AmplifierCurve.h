// The amplifier's curve: a slightly asymmetric, soft compression, folded over a knee at 2.8 and a
// straight line from 7.0 up.
#pragma once

#include <cmath>

// x / (slope * |x + bias| + 1). The bias makes positive and negative peaks differ.
inline double shapeAmplifier(double x, double slope, double bias)
{
    constexpr double kKnee = 2.8;
    constexpr double kStraight = 7.0;
    const double v = x / (slope * std::fabs(x + bias) + 1.0);
    double a = std::fabs(v);
    if (!(a > kKnee))
        return v;
    // The exponent freezes at 4.2 = 7.0 - 2.8.
    a = (a - kKnee) * std::pow(0.8, a < kStraight ? a - kKnee : 4.2) + kKnee;
    return std::copysign(a, v);
}
