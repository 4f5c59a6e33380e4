// The name field's value, which encodes the preset that its text belongs to.
#pragma once

#include "presets/PresetSlot.h"

constexpr float fieldValueOf(int preset)
{
    return (static_cast<float>(preset) + 1.0f) / kPresetCount;
}

// 23 * (preset + 1) / 24 exceeds the preset's number by less than 1.
constexpr int presetOf(float fieldValue)
{
    return static_cast<int>(fieldValue * static_cast<float>(kPresetCount - 1));
}

constexpr bool everyPresetIsFound()
{
    for (int preset = 0; preset < kPresetCount; ++preset)
        if (presetOf(fieldValueOf(preset)) != preset)
            return false;
    return true;
}
static_assert(everyPresetIsFound());
