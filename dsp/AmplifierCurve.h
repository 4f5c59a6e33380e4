// The amplifier's transfer curve: slightly asymmetric soft compression to v, and above a knee at
// |v| = 2.8 a further reduction of the excess e = |v| - 2.8 to e * 0.8^e; from |v| = 7.0 up a
// straight line with the slope 0.8^4.2.
#pragma once

#include <cmath>

constexpr double kAmplifierKnee = 2.8;
constexpr double kAmplifierCurveEnd = 4.2;  // of the excess: 7.0 - 2.8

// 0.8^x for 0 .. 4.2, within 2 units in the last place; also for a vector. The polynomial that
// equals it at the 13 Chebyshev points of this range, expanded about 2.
template <class Real>
[[gnu::always_inline]] inline Real powerOfFourFifths(Real x)
{
    constexpr double kCoefficients[] = {
        -1.0998302581891153e-15, 5.39883362664161e-14,   -2.4191987556089984e-12,
        9.757399221412309e-11,   -3.498161287181348e-09, 1.0973711064377084e-07,
        -2.950668570463952e-06,  6.611592746378538e-05,  -0.001185172989753713,
        0.01593377423779757,     -0.14281187284109423,   0.64};
    const Real y = x - 2.0;
    Real sum = y * 1.9992487325292163e-17;
    sum += kCoefficients[0];
    for (int i = 1; i < 12; ++i)
        sum = sum * y + kCoefficients[i];
    return sum;
}

// x / (slope * |x + bias| + 1). The bias makes positive and negative peaks differ.
inline double compressAmplifier(double x, double slope, double bias)
{
    return x / (slope * std::fabs(x + bias) + 1.0);
}

inline double shapeAmplifier(double x, double slope, double bias)
{
    const double v = compressAmplifier(x, slope, bias);
    const double a = std::fabs(v);
    if (!(a > kAmplifierKnee))
        return v;
    const double excess = a - kAmplifierKnee;
    const double exponent = excess < kAmplifierCurveEnd ? excess : kAmplifierCurveEnd;
    return std::copysign(excess * powerOfFourFifths(exponent) + kAmplifierKnee, v);
}
