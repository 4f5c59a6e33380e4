// zkrt46 preset: single presets, in banks and in preset files.
#include "tools/banks/PresetName.h"
#include "tools/banks/PresetTable.h"
#include "tools/commands/Commands.h"
#include "tools/commands/PresetChoice.h"
#include "tools/common/ToolError.h"

#include <cstdio>

namespace tool {

namespace {

struct PresetOptions {
    std::string plugin;
    PresetChoice choice;
    bool all = false;
    bool json = false;
    std::string input;
    std::string into;
    std::string at;
    std::string output;
};

int runList(const PresetOptions& options)
{
    Displays displays(options.plugin);
    const BankContent bank = readBankOrFactory(options.choice.bank, displays);
    std::fputs(bankTable(bank.presets).c_str(), stdout);
    return 0;
}

void expectOneChoice(const PresetChoice& choice)
{
    if (choice.preset.empty() == choice.presetFile.empty())
        throw ToolError("give either a preset's name or index, or --preset-file");
}

int runShow(const PresetOptions& options)
{
    const PresetChoice& choice = options.choice;
    expectOneChoice(choice);
    Displays displays(options.plugin);
    PresetSlot preset{};
    std::string heading;
    if (!choice.presetFile.empty()) {
        preset = readPreset(choice.presetFile, displays);
        heading = "\"" + printable(nameOf(preset)) + "\" in '" + choice.presetFile + "'";
    } else {
        const BankContent bank = readBankOrFactory(choice.bank, displays);
        const std::string label = bankLabel(choice.bank);
        const std::size_t index = findPreset(bank.presets, choice.preset, label);
        preset = bank.presets[index];
        heading = presetLabel(index, preset) + " of " + label;
    }
    if (options.json) {
        std::fputs(presetToJson(preset, displays.get()).c_str(), stdout);
        return 0;
    }
    const Shown shown = options.all ? Shown::All : Shown::Changed;
    const std::string table = presetTable(preset, shown, displays.get());
    std::printf("Preset %s\n%s", heading.c_str(), table.c_str());
    return 0;
}

int runExport(const PresetOptions& options)
{
    expectOneChoice(options.choice);
    Displays displays(options.plugin);
    writePreset(options.output, chosenPreset(options.choice, displays), displays);
    return 0;
}

int runImport(const PresetOptions& options)
{
    const std::string& output = options.output.empty() ? options.into : options.output;
    if (output.empty())
        throw ToolError("give the bank with --into, or with -o a new one to make of the factory's");
    Displays displays(options.plugin);
    const PresetSlot preset = readPreset(options.input, displays);
    BankContent bank = readBankOrFactory(options.into, displays);
    bank.presets[findPreset(bank.presets, options.at, bankLabel(options.into))] = preset;
    writeBank(output, bank, displays);
    return 0;
}

}  // namespace

void addPresetCommand(CLI::App& app, Action& action)
{
    auto options = std::make_shared<PresetOptions>();
    CLI::App& group = *app.add_subcommand("preset", "List, show, export and import presets");
    group.require_subcommand(1);

    CLI::App& list = *group.add_subcommand(
        "list", "List the presets of a bank, with the number of settings that are not default");
    addBankOption(list, options->choice.bank);
    bindAction(list, action, options, runList);

    CLI::App& show =
        *group.add_subcommand("show", "Show a preset: as displayed and as stored, from 0 to 1");
    show.add_option("PRESET", options->choice.preset, "Its name or index")->type_name("NAME|INDEX");
    CLI::Option* bank =
        show.add_option("--bank", options->choice.bank,
                        "Bank (.zkb, .fxb, .vstpreset, .json). Default: the factory bank")
            ->type_name("FILE");
    show.add_option("--preset-file", options->choice.presetFile,
                    "Show this preset (.zkr, .fxp, .vstpreset, .json)")
        ->type_name("FILE")
        ->excludes(bank);
    show.add_flag("--all", options->all, "Also what is as in the default preset");
    addJsonFlag(show, options->json);
    bindAction(show, action, options, runShow);

    CLI::App& exporting = *group.add_subcommand(
        "export", "Write a preset of a bank, or of another file, into a file");
    exporting.add_option("PRESET", options->choice.preset, "Its name or index")
        ->type_name("NAME|INDEX");
    addBankOption(exporting, options->choice.bank);
    exporting
        .add_option("--preset-file", options->choice.presetFile,
                    "Take this preset (.zkr, .fxp, .vstpreset, .json)")
        ->type_name("FILE")
        ->excludes(exporting.get_option("--bank"));
    exporting
        .add_option("-o,--output", options->output,
                    "The file: .zkr, .fxp or .vstpreset for hosts, or .json")
        ->type_name("FILE")
        ->required();
    bindAction(exporting, action, options, runExport);

    CLI::App& importing = *group.add_subcommand("import", "Put a preset file into a bank");
    importing.add_option("IN", options->input, "The preset: .zkr, .fxp, .vstpreset or .json")
        ->required();
    importing
        .add_option("--into", options->into,
                    "The bank: .zkb, .fxb, .vstpreset or .json. Default: the factory's")
        ->type_name("FILE");
    importing.add_option("--at", options->at, "Name or index of the preset to replace")
        ->type_name("NAME|INDEX")
        ->required();
    importing
        .add_option("-o,--output", options->output,
                    "The changed bank, of the same kinds. Default: the bank itself")
        ->type_name("FILE");
    bindAction(importing, action, options, runImport);
}

}  // namespace tool
