// PresetSlot: one preset of the bank.
#pragma once

#include "params/ids/ParameterIds.h"

#include <cstddef>

constexpr int kPresetCount = 24;
constexpr std::size_t kPresetNameSize = 24;

struct PresetSlot {
    // UTF-8. A name from a file may be anything, and if it fills all bytes it has no terminator.
    char name[kPresetNameSize];
    // Normalised, by parameter id.
    float values[kPresetParamCount];
};
static_assert(sizeof(PresetSlot) == 256, "name and values fill a slot without padding");

// Stores a value; an id without an entry is ignored.
void setValue(PresetSlot& slot, unsigned id, float value);

// Stores at most 23 bytes of `text`, without a part of a UTF-8 character that does not fit.
void setName(PresetSlot& slot, const char* text);
