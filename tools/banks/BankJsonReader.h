// BankJsonReader: does the work of bankFromJson and presetFromJson.
#pragma once

#include "tools/banks/BankJson.h"
#include "tools/banks/JsonTree.h"
#include "tools/common/ToolError.h"

#include <initializer_list>
#include <string>

namespace tool {

// Reads one file, and keeps the preset and parameter being read for error messages.
class BankJsonReader {
public:
    BankJsonReader(const std::string& text, const std::string& name, ParameterText& parameters)
        : name(name), parameters(parameters), root(parseJson(text, name))
    {
    }
    BankContent readBank();
    PresetSlot readPreset();

private:
    [[noreturn]] void refuse(const std::string& reason) const
    {
        refuseUntitled((title.empty() ? "" : title + ": ") + reason);
    }
    // For reasons that name the parameter themselves.
    [[noreturn]] void refuseUntitled(const std::string& reason) const
    {
        throw ToolError(name + ": " + (where.empty() ? "" : where + ": ") + reason);
    }
    // An object with these keys at most, each of them once.
    void expectObject(const JsonValue& value, std::initializer_list<const char*> keys) const;
    void refuseDuplicates(const JsonValue& object) const;
    const JsonValue& member(const JsonValue& object, const char* key, JsonValue::Type type) const;
    void expectFormat(const char* format, const char* what) const;
    int readIndex(const JsonValue& value) const;

    void readPresetMembers(const JsonValue& object, PresetSlot& preset);
    void readName(const JsonValue& object, PresetSlot& preset) const;
    void readParameters(const JsonValue& object, PresetSlot& preset);
    float readValue(const JsonValue& entry, int index);
    float valueOfDisplay(int index, const std::string& display);
    float readStored(const JsonValue& value) const;

    std::string name;
    std::string where;  // the preset being read
    std::string title;  // the parameter being read
    ParameterText& parameters;
    JsonValue root;
};

}  // namespace tool
