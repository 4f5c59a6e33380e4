// Writes banks and presets as JSON, one parameter per line.
#include "tools/banks/BankJson.h"

#include "tools/banks/JsonTree.h"
#include "tools/banks/PresetName.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace tool {

namespace {

std::string hexOf(const char* bytes, std::size_t count)
{
    std::string text;
    char digits[4];
    for (std::size_t i = 0; i < count; ++i) {
        std::snprintf(digits, sizeof(digits), "%02x",
                      static_cast<unsigned>(static_cast<unsigned char>(bytes[i])));
        text += digits;
    }
    return text;
}

// The members of a preset's object, without its braces.
std::string presetMembers(const PresetSlot& preset, ParameterText& parameters,
                          const std::string& indent)
{
    std::string text = indent + "\"name\": " + jsonQuoted(nameOf(preset)) + ",\n";
    if (!isPlainName(preset.name))
        text += indent + "\"nameBytes\": \"" + hexOf(preset.name, kPresetNameSize) + "\",\n";
    text += indent + "\"parameters\": {\n";
    for (std::size_t id = 0; id < kPresetParamCount; ++id) {
        const float value = preset.values[id];
        text += indent + "  " + jsonQuoted(parameters.title(static_cast<int>(id)))
            + ": {\"display\": " + jsonQuoted(displayWithUnit(parameters, id, value))
            + ", \"stored\": " + storedText(value) + "}"
            + (id + 1 < kPresetParamCount ? ",\n" : "\n");
    }
    return text + indent + "}\n";
}

}  // namespace

std::string displayWithUnit(ParameterText& parameters, std::size_t id, float value)
{
    const int index = static_cast<int>(id);
    const std::string display = parameters.displayAt(index, value);
    const std::string unit = parameters.unit(index);
    double number = 0.0;
    return !unit.empty() && parseNumber(display, number) ? display + " " + unit : display;
}

std::string storedText(float value)
{
    // "-0" would be read as an integer, without its sign.
    if (value == 0.0f)
        return std::signbit(value) ? "-0.0" : "0";
    char text[32];
    return std::string(text, std::to_chars(text, text + sizeof(text), value).ptr);
}

std::string bankToJson(const BankContent& bank, ParameterText& parameters)
{
    std::string text = "{\n  \"format\": \"zkrt46-bank\",\n  \"version\": 1,\n  \"currentPreset\": "
        + std::to_string(bank.currentPreset) + ",\n  \"presets\": [\n";
    for (std::size_t index = 0; index < bank.presets.size(); ++index)
        text += "    {\n" + presetMembers(bank.presets[index], parameters, "      ") + "    }"
            + (index + 1 < bank.presets.size() ? ",\n" : "\n");
    return text + "  ]\n}\n";
}

std::string presetToJson(const PresetSlot& preset, ParameterText& parameters)
{
    return "{\n  \"format\": \"zkrt46-preset\",\n  \"version\": 1,\n"
        + presetMembers(preset, parameters, "  ") + "}\n";
}

}  // namespace tool
