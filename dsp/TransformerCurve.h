// The saturation curve of both transformers: an odd function, a cubic up to its knee and almost
// flat beyond it.
#pragma once

#include <cmath>

constexpr double kTransformerKnee = 20.37;
constexpr double kTransformerSlopeBeyond = 0.00333;

// For a magnitude up to the knee, or a vector of magnitudes.
template <class Real>
[[gnu::always_inline]] constexpr Real transformerCubic(Real a)
{
    return -0.000824844 * (a * a * a) + 0.000705321 * (a * a) + 0.998081 * a;
}

inline double shapeTransformer(double v)
{
    const double a = std::fabs(v);
    const double r = a <= kTransformerKnee
        ? transformerCubic(a)
        : transformerCubic(kTransformerKnee) + (a - kTransformerKnee) * kTransformerSlopeBeyond;
    return std::copysign(r, v);
}
