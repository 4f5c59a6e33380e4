// Preset and bank files, binary or JSON. Which of the two is told by their content when they are
// read and by their name's ending when they are written.
#pragma once

#include "tools/banks/BankCheck.h"
#include "tools/banks/BankJson.h"

#include <optional>
#include <string>
#include <vector>

namespace tool {

// True for a plug-in whose parameters presets hold.
bool takesPresets(const host::EffectFields& fields);

// The plug-in's titles and displays, opened when they are first needed.
class Displays {
public:
    explicit Displays(std::string pluginPath) : path(std::move(pluginPath)) { }
    // Throws ToolError when the plug-in is another one than presets are for.
    ParameterText& get();

private:
    std::string path;
    std::optional<ParameterText> opened;
};

// The whole of an ordinary file of 1 GiB at most. Throws ToolError.
std::vector<std::uint8_t> readFile(const std::string& path);
bool isJson(const std::vector<std::uint8_t>& bytes);

// Throw ToolError with what is wrong where the plug-in would not take the file. What a bank does
// not hold comes from the factory's. A file that is taken in part gets a warning.
BankContent readBank(const std::string& path, Displays& displays);
PresetSlot readPreset(const std::string& path, Displays& displays);

// Throw ToolError; the file then is what it was before. Endings: .zkb or .zkr, and .json.
void writeBank(const std::string& path, const BankContent& bank, Displays& displays);
void writePreset(const std::string& path, const PresetSlot& preset, Displays& displays);

// As the plug-in saves them.
std::vector<std::uint8_t> bankBytes(const BankContent& bank);
std::vector<std::uint8_t> presetBytes(const PresetSlot& preset);

// The factory's bank for an empty path.
BankContent readBankOrFactory(const std::string& path, Displays& displays);
// "the factory bank", "'mine.zkb'"
std::string bankLabel(const std::string& path);

}  // namespace tool
