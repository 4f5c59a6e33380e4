// The value of the name field, which says which preset the text in it belongs to.
#pragma once

#include "presets/PresetSlot.h"

constexpr float fieldValueOf(int preset)
{
    return (static_cast<float>(preset) + 1.0f) / kPresetCount;
}

// 23 times (preset + 1) / 24 lies above the preset's number by less than 1.
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
