// The names of presets, which are 24 bytes of anything.
#pragma once

#include "presets/PresetSlot.h"

#include <string>

namespace tool {

// The bytes ahead of the terminator; all 24 without one.
std::string nameOf(const PresetSlot& preset);

// True when text and zeros are all there is, so that nameOf alone gives the 24 bytes back.
bool isPlainName(const char* name);

// For a terminal: whatever is no printable UTF-8 as \xNN.
std::string printable(const std::string& text);

// "3 \"Air\"", for messages and tables.
std::string presetLabel(std::size_t index, const PresetSlot& preset);

}  // namespace tool
