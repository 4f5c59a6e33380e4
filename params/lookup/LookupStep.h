// The table lookup: how a knob position from 0 to 1 selects a step of a table.
#pragma once

#include "params/lookup/Truncate.h"

#include <array>
#include <cstddef>

// Returns the entry of table[0 .. count - 1] nearest to the position `value`, which is limited to
// 0.0 .. 1.0 (a value that is not a number counts as 0.0). count is at least 1.
inline double lookupStep(const double* table, int count, double value)
{
    if (!(value > 0.0))
        value = 0.0;
    if (value > 1.0)
        value = 1.0;
    const int index = truncate(value * (count - 1) + 0.5);
    return table[index >= count - 1 ? count - 1 : index];
}

template <std::size_t steps>
double lookupStep(const std::array<double, steps>& table, double value)
{
    return lookupStep(table.data(), static_cast<int>(steps), value);
}
