// PresetSlot: one preset, as the bank holds it.
#pragma once

#include "params/ids/ParameterIds.h"

#include <cstddef>

constexpr int kPresetCount = 24;
constexpr std::size_t kPresetNameSize = 24;

struct PresetSlot {
    // Narrow text. A name from a file may fill all bytes and then has no terminator.
    char name[kPresetNameSize];
    // The normalised value of parameter N in entry N.
    float values[kPresetParamCount];
};
static_assert(sizeof(PresetSlot) == 256, "a bank is addressed by this stride");

// Stores the value; an id without a slot is ignored.
void setValue(PresetSlot& slot, unsigned id, float value);

// Keeps at most 23 bytes of `text`; the rest is cut, in front of a UTF-8 character that does not
// fit as a whole.
void setName(PresetSlot& slot, const char* text);
