// BankJsonReader: a preset's name and parameters.
#include "tools/banks/BankJsonReader.h"
#include "tools/banks/PresetName.h"

#include <algorithm>
#include <bitset>
#include <charconv>
#include <cstring>
#include <iterator>

namespace tool {

namespace {

constexpr std::size_t kMaxName = kPresetNameSize - 1;

}  // namespace

void BankJsonReader::readPresetMembers(const JsonValue& object, PresetSlot& preset)
{
    expectObject(object, {"name", "nameBytes", "parameters"});
    readName(object, preset);
    where += " \"" + printable(nameOf(preset)) + "\"";
    readParameters(object, preset);
}

void BankJsonReader::readName(const JsonValue& object, PresetSlot& preset) const
{
    const std::string& text = member(object, "name", JsonValue::Type::String).text;
    std::memset(preset.name, 0, kPresetNameSize);
    if (!object.find("nameBytes")) {
        if (text.find('\0') != std::string::npos)
            refuse("the name has a zero character in it");
        if (text.size() > kMaxName)
            refuse("the name \"" + printable(text.substr(0, 60)) + (text.size() > 60 ? "..." : "")
                   + "\" has " + std::to_string(text.size()) + " bytes; there is room for "
                   + std::to_string(kMaxName));
        std::memcpy(preset.name, text.data(), text.size());
        return;
    }
    const std::string& hex = member(object, "nameBytes", JsonValue::Type::String).text;
    bool good = hex.size() == 2 * kPresetNameSize;
    for (std::size_t i = 0; good && i < kPresetNameSize; ++i) {
        unsigned byte = 0;
        const char* digits = hex.data() + 2 * i;
        const auto result = std::from_chars(digits, digits + 2, byte, 16);
        good = result.ec == std::errc() && result.ptr == digits + 2;
        preset.name[i] = static_cast<char>(byte);
    }
    if (!good)
        refuse("\"nameBytes\" must be " + std::to_string(2 * kPresetNameSize)
               + " hexadecimal digits");
    if (jsonQuoted(nameOf(preset)) != jsonQuoted(text))
        refuse("\"name\" and \"nameBytes\" disagree; to rename, take \"nameBytes\" away");
}

void BankJsonReader::readParameters(const JsonValue& object, PresetSlot& preset)
{
    const PresetSlot& initial = factoryBank().front();
    std::copy(std::begin(initial.values), std::end(initial.values), preset.values);
    if (!object.find("parameters"))
        return;
    const JsonValue& entries = member(object, "parameters", JsonValue::Type::Object);
    refuseDuplicates(entries);
    std::bitset<kPresetParamCount> seen;
    for (std::size_t i = 0; i < entries.keys.size(); ++i) {
        int index = 0;
        try {
            index = parameters.indexOf(entries.keys[i]);
        } catch (const ToolError& error) {
            refuse(printable(error.what()));
        }
        title = parameters.title(index);
        const auto id = static_cast<std::size_t>(index);
        if (seen[id])
            refuse("the parameter stands twice");
        seen[id] = true;
        preset.values[id] = readValue(entries.items[i], index);
        title.clear();
    }
}

float BankJsonReader::readValue(const JsonValue& entry, int index)
{
    if (entry.type == JsonValue::Type::String)
        return valueOfDisplay(index, entry.text);
    if (entry.type == JsonValue::Type::Number)
        refuse("a bare number could mean two things: write \"" + entry.text
               + "\" for what the plug-in displays, or {\"stored\": " + entry.text
               + "} for a value from 0 to 1");
    expectObject(entry, {"display", "stored"});
    const JsonValue* stored = entry.find("stored");
    const JsonValue* display = entry.find("display");
    if (!stored && !display)
        refuse("expected \"display\" or \"stored\"");
    const std::string text = display ? member(entry, "display", JsonValue::Type::String).text : "";
    if (!stored)
        return valueOfDisplay(index, text);
    const float value = readStored(*stored);
    const std::string shown = displayWithUnit(parameters, static_cast<std::size_t>(index), value);
    // Several stored values have the same display, so the displays are compared.
    if (display && text != shown
        && displayWithUnit(parameters, static_cast<std::size_t>(index), valueOfDisplay(index, text))
            != shown)
        refuse("\"display\" says '" + printable(text) + "', but \"stored\", " + storedText(value)
               + ", is '" + shown + "'; take away the one that is wrong");
    return value;
}

float BankJsonReader::valueOfDisplay(int index, const std::string& display)
{
    try {
        return parameters.valueOf(index, display);
    } catch (const ToolError& error) {
        refuseUntitled(printable(error.what()));
    }
}

float BankJsonReader::readStored(const JsonValue& value) const
{
    double number = -1.0;
    if (value.type != JsonValue::Type::Number)
        refuse(std::string("\"stored\" must be a number, not ") + typeName(value));
    if (!parseNumber(value.text, number) || number < 0.0 || number > 1.0)
        refuse("\"stored\" must lie from 0 to 1, not at " + value.text);
    // Converted to float directly: by way of double it could be rounded twice.
    float stored = 0.0f;
    const char* end = value.text.data() + value.text.size();
    const auto result = std::from_chars(value.text.data(), end, stored);
    return result.ec == std::errc() ? stored : static_cast<float>(number);
}

}  // namespace tool
