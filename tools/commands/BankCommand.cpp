// zkrt46 bank: whole banks.
#include "tools/banks/PresetFile.h"
#include "tools/banks/PresetName.h"
#include "tools/banks/PresetTable.h"
#include "tools/commands/Commands.h"

#include <cstdio>

namespace tool {

namespace {

struct BankOptions {
    std::string plugin;
    std::string input;  // empty: the factory's
    std::string other;
    std::string output;
    bool all = false;
};

int runShow(const BankOptions& options)
{
    Displays displays(options.plugin);
    const BankContent bank = readBankOrFactory(options.input, displays);
    const auto current = static_cast<std::size_t>(bank.currentPreset);
    const Shown shown = options.all ? Shown::All : Shown::Changed;
    std::string text = "Current preset: " + presetLabel(current, bank.presets[current]) + "\n";
    for (std::size_t index = 0; index < bank.presets.size(); ++index)
        text += "\n" + presetLabel(index, bank.presets[index]) + "\n"
            + presetTable(bank.presets[index], shown, displays.get(), "  ");
    std::fputs(text.c_str(), stdout);
    return 0;
}

int runConvert(const BankOptions& options)
{
    Displays displays(options.plugin);
    writeBank(options.output, readBankOrFactory(options.input, displays), displays);
    return 0;
}

int runDiff(const BankOptions& options)
{
    Displays displays(options.plugin);
    const BankContent left = readBank(options.input, displays);
    const BankContent right = readBankOrFactory(options.other, displays);
    const std::string table = differenceTable(left, right, displays.get());
    std::fputs(table.empty() ? "The banks are equal\n" : table.c_str(), stdout);
    return table.empty() ? 0 : 1;
}

}  // namespace

void addBankCommand(CLI::App& app, Action& action)
{
    auto options = std::make_shared<BankOptions>();
    CLI::App& group = *app.add_subcommand("bank", "Show, convert and compare banks");
    group.require_subcommand(1);

    CLI::App& show = *group.add_subcommand(
        "show", "Show what the presets of a bank set: as displayed and as stored, from 0 to 1");
    show.add_option("BANK", options->input,
                    "The bank: .zkb, .fxb, .vstpreset or .json. Default: the factory bank");
    show.add_flag("--all", options->all, "Also what is as in the default preset");
    bindAction(show, action, options, runShow);

    CLI::App& exporting = *group.add_subcommand(
        "export", "Write a bank into a file of another kind, such as one of hosts");
    exporting.add_option("BANK", options->input,
                         "The bank: .zkb, .fxb, .vstpreset or .json. Default: the factory bank");
    exporting
        .add_option("-o,--output", options->output,
                    "The file: .zkb, .fxb or .vstpreset for hosts, or .json")
        ->type_name("FILE")
        ->required();
    bindAction(exporting, action, options, runConvert);

    CLI::App& importing = *group.add_subcommand(
        "import", "Make a bank file of JSON or of a host's file, or the reverse");
    importing.add_option("IN", options->input, "The bank: .json, .fxb, .vstpreset or .zkb")
        ->required();
    importing
        .add_option("-o,--output", options->output,
                    "The file: .zkb, .fxb or .vstpreset for hosts, or .json")
        ->type_name("FILE")
        ->required();
    bindAction(importing, action, options, runConvert);

    CLI::App& diff = *group.add_subcommand(
        "diff", "Compare two banks; the exit code is 0 if they are equal and 1 if not");
    diff.add_option("FIRST", options->input, "A bank: .zkb, .fxb, .vstpreset or .json")->required();
    diff.add_option("SECOND", options->other,
                    "Another: .zkb, .fxb, .vstpreset or .json. Default: the factory bank");
    bindAction(diff, action, options, runDiff);
}

}  // namespace tool
