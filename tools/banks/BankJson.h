// Banks and presets as JSON, to read and edit by hand. docs/preset-json.md describes the format.
#pragma once

#include "presets/FactoryBank.h"
#include "tools/common/ParameterText.h"

#include <string>

namespace tool {

struct BankContent {
    Bank presets;
    int currentPreset;  // 0 to 23
};

// Reading the text back gives the same bytes, for values from 0 to 1.
std::string bankToJson(const BankContent& bank, ParameterText& parameters);
std::string presetToJson(const PresetSlot& preset, ParameterText& parameters);

// `name` is for messages. Throw ToolError naming line and column, or preset and parameter.
BankContent bankFromJson(const std::string& text, const std::string& name,
                         ParameterText& parameters);
PresetSlot presetFromJson(const std::string& text, const std::string& name,
                          ParameterText& parameters);

// Whether the text's "format" is that of a preset. Throws ToolError if the text is no JSON.
bool isPresetJson(const std::string& text, const std::string& name);

// "3.50 dB", "Off".
std::string displayWithUnit(ParameterText& parameters, std::size_t id, float value);

// The shortest decimal text that reads back as this value.
std::string storedText(float value);

}  // namespace tool
