// BankJsonReader: format, version and the list of presets.
#include "tools/banks/BankJsonReader.h"
#include "tools/banks/PresetName.h"

#include <algorithm>
#include <charconv>

namespace tool {

void BankJsonReader::expectObject(const JsonValue& value,
                                  std::initializer_list<const char*> keys) const
{
    if (!value.isObject())
        refuse(std::string("expected an object in braces, not ") + typeName(value));
    refuseDuplicates(value);
    for (const std::string& key : value.keys)
        if (std::find(keys.begin(), keys.end(), key) == keys.end()) {
            std::string known;
            for (const char* word : keys)
                known += (known.empty() ? "" : ", ") + std::string(word);
            refuse("unknown key \"" + printable(key) + "\"; there can be " + known);
        }
}

void BankJsonReader::refuseDuplicates(const JsonValue& object) const
{
    for (std::size_t i = 0; i < object.keys.size(); ++i)
        if (std::find(object.keys.begin(), object.keys.begin() + static_cast<std::ptrdiff_t>(i),
                      object.keys[i])
            != object.keys.begin() + static_cast<std::ptrdiff_t>(i))
            refuse("\"" + printable(object.keys[i]) + "\" stands twice");
}

const JsonValue& BankJsonReader::member(const JsonValue& object, const char* key,
                                        JsonValue::Type type) const
{
    const JsonValue* found = object.find(key);
    if (!found)
        refuse(std::string("\"") + key + "\" is missing");
    if (found->type != type) {
        JsonValue wanted;
        wanted.type = type;
        refuse(std::string("\"") + key + "\" must be " + typeName(wanted) + ", not "
               + typeName(*found));
    }
    return *found;
}

void BankJsonReader::expectFormat(const char* format, const char* what) const
{
    if (!root.isObject())
        refuse(std::string("expected an object in braces, not ") + typeName(root));
    const std::string& found = member(root, "format", JsonValue::Type::String).text;
    if (found != format)
        refuse("the format is \"" + printable(found) + "\"; expected \"" + format + "\", " + what);
    const std::string& version = member(root, "version", JsonValue::Type::Number).text;
    if (version != "1")
        refuse("version " + version + " is not known; this program reads version 1");
}

BankContent BankJsonReader::readBank()
{
    expectFormat("zkrt46-bank", "a bank");
    expectObject(root, {"format", "version", "currentPreset", "presets"});
    // Presets missing at the end of the list are the factory bank's last one, an empty preset.
    BankContent bank{};
    bank.presets.fill(factoryBank().back());
    if (const JsonValue* current = root.find("currentPreset"))
        bank.currentPreset = readIndex(*current);
    const JsonValue& presets = member(root, "presets", JsonValue::Type::Array);
    if (presets.items.size() > bank.presets.size())
        refuse("there are " + std::to_string(presets.items.size()) + " presets; a bank has "
               + std::to_string(kPresetCount) + " at most");
    for (std::size_t index = 0; index < presets.items.size(); ++index) {
        where = "preset " + std::to_string(index);
        readPresetMembers(presets.items[index], bank.presets[index]);
    }
    return bank;
}

PresetSlot BankJsonReader::readPreset()
{
    expectFormat("zkrt46-preset", "a preset");
    PresetSlot preset{};
    expectObject(root, {"format", "version", "name", "nameBytes", "parameters"});
    readName(root, preset);
    readParameters(root, preset);
    return preset;
}

int BankJsonReader::readIndex(const JsonValue& value) const
{
    int index = -1;
    const char* end = value.text.data() + value.text.size();
    const auto result = std::from_chars(value.text.data(), end, index);
    if (value.type != JsonValue::Type::Number || result.ec != std::errc() || result.ptr != end
        || index < 0 || index >= kPresetCount)
        refuse("\"currentPreset\" must be a whole number from 0 to 23");
    return index;
}

bool isPresetJson(const std::string& text, const std::string& name)
{
    const JsonValue root = parseJson(text, name);
    const JsonValue* format = root.find("format");
    return format && format->text == "zkrt46-preset";
}

BankContent bankFromJson(const std::string& text, const std::string& name,
                         ParameterText& parameters)
{
    return BankJsonReader(text, name, parameters).readBank();
}

PresetSlot presetFromJson(const std::string& text, const std::string& name,
                          ParameterText& parameters)
{
    return BankJsonReader(text, name, parameters).readPreset();
}

}  // namespace tool
