#include "tools/commands/PresetChoice.h"

#include "tools/banks/PresetName.h"
#include "tools/common/ToolError.h"

#include <algorithm>
#include <cctype>

namespace tool {

namespace {

std::string lowerCase(std::string text)
{
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

bool isNumber(const std::string& text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char c) {
        return std::isdigit(c) != 0;
    });
}

std::optional<PresetSlot> factoryPreset(const host::EffectFields& fields)
{
    return takesPresets(fields) ? std::optional(factoryBank().front()) : std::nullopt;
}

}  // namespace

void addBankOption(CLI::App& command, std::string& path)
{
    command
        .add_option("--bank", path,
                    "Bank (.zkb, .fxb, .vstpreset, .json) to take it from. "
                    "Default: the factory bank")
        ->type_name("FILE");
}

void addPresetOptions(CLI::App& command, PresetChoice& choice)
{
    CLI::Option* preset =
        command
            .add_option("--preset", choice.preset,
                        "Start from this preset, before --set. A number from 0 to 23 is an index, "
                        "unless a preset has it as its name; of several with one name, such as "
                        "Init, the first is taken. Default: 0, in the factory bank \"Default\"")
            ->type_name("NAME|INDEX");
    CLI::Option* bank =
        command
            .add_option("--bank", choice.bank,
                        "Bank (.zkb, .fxb, .vstpreset, .json) that holds it. Default: the "
                        "factory bank")
            ->type_name("FILE");
    command
        .add_option("--preset-file", choice.presetFile,
                    "Start from a preset (.zkr, .fxp, .vstpreset, .json)")
        ->type_name("FILE")
        ->excludes(preset)
        ->excludes(bank);
}

std::size_t findPreset(const Bank& bank, const std::string& wanted, const std::string& bankName)
{
    for (std::size_t index = 0; index < bank.size(); ++index)
        if (nameOf(bank[index]) == wanted)
            return index;
    if (isNumber(wanted)) {
        const std::size_t zeros = std::min(wanted.find_first_not_of('0'), wanted.size() - 1);
        const std::string digits = wanted.substr(zeros);
        const int index = digits.size() <= 2 ? std::stoi(digits) : kPresetCount;
        if (index >= kPresetCount)
            throw ToolError("there is no preset " + digits + "; they go from 0 to 23");
        return static_cast<std::size_t>(index);
    }
    for (std::size_t index = 0; index < bank.size(); ++index)
        if (lowerCase(nameOf(bank[index])) == lowerCase(wanted))
            return index;
    throw ToolError("there is no preset '" + wanted + "' in " + bankName
                    + "; 'zkrt46 preset list' lists them");
}

PresetSlot chosenPreset(const PresetChoice& choice, Displays& displays)
{
    if (!choice.presetFile.empty())
        return readPreset(choice.presetFile, displays);
    const Bank bank = readBankOrFactory(choice.bank, displays).presets;
    return choice.preset.empty() ? bank.front()
                                 : bank[findPreset(bank, choice.preset, bankLabel(choice.bank))];
}

std::optional<PresetSlot> startingPreset(const PresetChoice& choice,
                                         const host::EffectFields& fields, Displays& displays)
{
    if (!choice.made())
        return factoryPreset(fields);
    if (!takesPresets(fields))
        throw ToolError("the presets are for another plug-in than this one");
    return chosenPreset(choice, displays);
}

std::vector<Assignment> assignmentsOf(const std::optional<PresetSlot>& preset)
{
    std::vector<Assignment> assignments;
    if (preset)
        for (std::size_t id = 0; id < kPresetParamCount; ++id)
            assignments.push_back({static_cast<int>(id), preset->values[id]});
    return assignments;
}

std::vector<Assignment> factoryStart(const host::EffectFields& fields)
{
    return assignmentsOf(factoryPreset(fields));
}

}  // namespace tool
