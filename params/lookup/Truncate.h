// Conversion of numbers to integers, rounding towards zero.
#pragma once

// The integer part of x, limited to -1e9 .. 1e9, so that small sums do not overflow. A value that
// is not a number gives 0.
inline int truncate(double x)
{
    constexpr double kLimit = 1e9;
    if (x != x)
        return 0;
    return static_cast<int>(x > kLimit ? kLimit : x < -kLimit ? -kLimit : x);
}

// A switch: 1 from 0.5 upwards, else 0.
inline int switchValue(double value)
{
    return truncate(value + 0.5) >= 1 ? 1 : 0;
}
