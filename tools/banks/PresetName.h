// Preset names: fields of 24 bytes with any content.
#pragma once

#include "presets/PresetSlot.h"

#include <string>

namespace tool {

// The bytes before the terminator; all 24 without one.
std::string nameOf(const PresetSlot& preset);

// True for UTF-8 text followed by zeros only, which nameOf returns without loss.
bool isPlainName(const char* name);

// For output on a terminal: bytes that are no printable UTF-8 become \xNN.
std::string printable(const std::string& text);

// "3 \"Air\"", for messages and tables.
std::string presetLabel(std::size_t index, const PresetSlot& preset);

}  // namespace tool
