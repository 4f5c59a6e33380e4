// The 24 presets that a new instance starts from.
#pragma once

#include "presets/PresetSlot.h"

#include <array>

using Bank = std::array<PresetSlot, kPresetCount>;

// Presets 0, "Default", and 21 to 23, "Init", hold the default of every parameter.
const Bank& factoryBank();
