// The amplifier's transfer curve: slightly asymmetric soft compression to v, and above a knee at
// |v| = 2.8 a further reduction of the excess e = |v| - 2.8 to e * 0.8^e; from |v| = 7.0 up a
// straight line with the slope 0.8^4.2.
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
    // The exponent stays at 4.2 = 7.0 - 2.8 on the straight line.
    a = (a - kAmplifierKnee) * std::pow(0.8, a < kStraight ? a - kAmplifierKnee : 4.2)
        + kAmplifierKnee;
    return std::copysign(a, v);
}
