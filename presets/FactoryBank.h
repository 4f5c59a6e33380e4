// The 24 factory presets, which a new instance starts with.
#pragma once

#include "presets/PresetSlot.h"

#include <array>

using Bank = std::array<PresetSlot, kPresetCount>;

// Presets 0, "Default", and 21 to 23, "Init", hold the default of every parameter.
const Bank& factoryBank();
