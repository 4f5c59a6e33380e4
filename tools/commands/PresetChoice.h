// Which preset a command is about: --preset, --bank and --preset-file.
#pragma once

#include "tools/banks/PresetFile.h"

#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace tool {

struct PresetChoice {
    std::string preset;  // name or index
    std::string bank;    // empty: the factory's
    std::string presetFile;

    bool made() const { return !(preset.empty() && bank.empty() && presetFile.empty()); }
};

void addBankOption(CLI::App& command, std::string& path);
// The three options, for commands that start the plug-in from a preset.
void addPresetOptions(CLI::App& command, PresetChoice& choice);

// The preset of that name; else, for a number, of that index; else of that name in any letter case.
// Of several with one name, the first. Throws ToolError.
std::size_t findPreset(const Bank& bank, const std::string& wanted, const std::string& bankName);
// Preset 0 where only a bank was chosen: it is what the plug-in selects when it loads a bank.
PresetSlot chosenPreset(const PresetChoice& choice, Displays& displays);

// What the plug-in is to start from: the chosen preset, else the factory's preset 0, whatever
// default of the user the plug-in came up with. Nothing for a plug-in that presets are not for,
// which keeps its own start; there a choice throws ToolError.
std::optional<PresetSlot> startingPreset(const PresetChoice& choice,
                                         const host::EffectFields& fields, Displays& displays);
// All values, in order of their ids; none without a preset.
std::vector<Assignment> assignmentsOf(const std::optional<PresetSlot>& preset);
// The factory's preset 0, with the same exception.
std::vector<Assignment> factoryStart(const host::EffectFields& fields);

}  // namespace tool
