// The preset that a command uses: --preset, --bank and --preset-file.
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

// The preset with that name; else, for a number, with that index; else with that name in any letter
// case. Of several, the first. Throws ToolError.
std::size_t findPreset(const Bank& bank, const std::string& wanted, const std::string& bankName);
// Preset 0 if only a bank was chosen: the plug-in selects it when it loads a bank.
PresetSlot chosenPreset(const PresetChoice& choice, Displays& displays);

// The preset to start the plug-in with: the chosen one, else the factory's preset 0, so that a
// default stored by the user has no effect. None for a plug-in that presets are not for; a choice
// for such a plug-in throws ToolError.
std::optional<PresetSlot> startingPreset(const PresetChoice& choice,
                                         const host::EffectFields& fields, Displays& displays);
// All values in order of their ids; empty without a preset.
std::vector<Assignment> assignmentsOf(const std::optional<PresetSlot>& preset);
// Of the factory's preset 0; empty for a plug-in that presets are not for.
std::vector<Assignment> factoryStart(const host::EffectFields& fields);

}  // namespace tool
