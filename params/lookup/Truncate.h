// How a normalised value becomes a whole number: cut off towards zero.
#pragma once

// The integer part of x. A value that is not a number counts as 0, and one too large for an int as
// the largest int of its sign.
inline int truncate(double x)
{
    constexpr double kLimit = 2147483647.0;
    if (x != x)
        return 0;
    return static_cast<int>(x > kLimit ? kLimit : x < -kLimit ? -kLimit : x);
}

// A switch: 1 from 0.5 upwards.
inline int roundSwitch(double value)
{
    return truncate(value + 0.5);
}
