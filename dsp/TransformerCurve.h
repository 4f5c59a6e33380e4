// The saturation curve of both transformers: an odd function, a cubic up to its knee and almost
// flat beyond it.
#pragma once

#include <cmath>

constexpr double kTransformerKnee = 20.37;

// For a magnitude up to the knee.
constexpr double transformerCubic(double a)
{
    return -0.000824844 * (a * a * a) + 0.000705321 * (a * a) + 0.998081 * a;
}

inline double shapeTransformer(double v)
{
    constexpr double kBeyondKnee = 0.00333;  // slope
    const double a = std::fabs(v);
    const double r = a <= kTransformerKnee
        ? transformerCubic(a)
        : transformerCubic(kTransformerKnee) + (a - kTransformerKnee) * kBeyondKnee;
    return std::copysign(r, v);
}
