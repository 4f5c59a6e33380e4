// Preset and bank files, binary, of hosts or JSON: recognised by content when read, and chosen by
// the name's ending when written.
#pragma once

#include "tools/banks/BankCheck.h"
#include "tools/banks/BankJson.h"

#include <optional>
#include <string>
#include <vector>

namespace tool {

// Whether presets are for this plug-in, by its unique id and number of parameters.
bool takesPresets(const host::EffectFields& fields);

// The plug-in's titles and displays. The plug-in is opened at the first call of get.
class Displays {
public:
    explicit Displays(std::string path) : path(std::move(path)) { }
    // Throws ToolError when presets are not for this plug-in.
    ParameterText& get();

private:
    std::string path;
    std::optional<ParameterText> opened;
};

// The content of a regular file of at most 1 GiB. Throws ToolError.
std::vector<std::uint8_t> readFile(const std::string& path);
bool isJson(const std::vector<std::uint8_t>& bytes);

// Throw ToolError with the reason when the plug-in would not load the file. What a bank file leaves
// out is as in the factory bank. A file that is loaded in part gives a warning on standard error.
// The preset of a host's file is the one that it selects; without a name it gets that of the file.
BankContent readBank(const std::string& path, Displays& displays);
PresetSlot readPreset(const std::string& path, Displays& displays);

// Throw ToolError; an existing file is then unchanged. Endings: .zkb, .fxb, .vstpreset and .json
// for a bank, .zkr, .fxp, .vstpreset and .json for a preset.
void writeBank(const std::string& path, const BankContent& bank, Displays& displays);
void writePreset(const std::string& path, const PresetSlot& preset, Displays& displays);

// Throws ToolError if writePreset would refuse the name or could not write to the folder.
void expectPresetPath(const std::string& path);

// The files' bytes as the plug-in saves them.
std::vector<std::uint8_t> bankBytes(const BankContent& bank);
std::vector<std::uint8_t> presetBytes(const PresetSlot& preset);

// The factory bank for an empty path.
BankContent readBankOrFactory(const std::string& path, Displays& displays);
// "the factory bank", "'mine.zkb'"
std::string bankLabel(const std::string& path);

}  // namespace tool
