// zkrt46 check: what is wrong with preset and bank files.
#include "tools/banks/PresetFile.h"
#include "tools/commands/Commands.h"
#include "tools/common/ToolError.h"
#include "tools/host/HostError.h"

#include <algorithm>
#include <cstdio>

namespace tool {

namespace {

struct CheckOptions {
    std::string plugin;
    std::vector<std::string> files;
};

// Exit codes.
constexpr int kClean = 0, kFaulty = 1, kUnreadable = 2;

// Empty when the plug-in cannot be opened; the check works without titles.
std::vector<std::string> titlesOf(Displays& displays)
{
    std::vector<std::string> titles;
    try {
        for (int index = 0; index < displays.get().count(); ++index)
            titles.push_back(displays.get().title(index));
    } catch (const ToolError&) {
        titles.clear();
    } catch (const host::HostError&) {
        titles.clear();
    }
    return titles;
}

const char* kindText(FileKind kind)
{
    switch (kind) {
    case FileKind::Preset:
        return "preset, ";
    case FileKind::Bank:
        return "bank, ";
    case FileKind::State:
        return "bank as a project keeps it, ";
    case FileKind::Unknown:
        break;
    }
    return "";
}

int checkJson(const std::string& path, const std::string& text, Displays& displays)
{
    ParameterText& parameters = displays.get();
    bool preset = false;
    try {
        preset = isPresetJson(text, path);
        if (preset)
            presetFromJson(text, path, parameters);
        else
            bankFromJson(text, path, parameters);
    } catch (const ToolError& error) {
        std::printf("%s\n", error.what());
        return kFaulty;
    }
    std::printf("%s: %s in JSON: no faults\n", path.c_str(), preset ? "preset" : "bank");
    return kClean;
}

int checkBytes(const std::string& path, const std::vector<std::uint8_t>& bytes, Displays& displays)
{
    const BankReport report = checkBank({bytes.data(), bytes.size()}, titlesOf(displays));
    std::string text = path + ": " + kindText(report.kind) + std::to_string(bytes.size())
        + " bytes: " + (report.hasFaults() ? "" : "no faults; ") + outcomeText(report) + "\n";
    for (const Finding& finding : report.findings)
        text += std::string(finding.isFault ? "  fault" : "  note")
            + (finding.offset ? " " + atByte(*finding.offset) : "") + ": " + finding.text + "\n";
    std::fputs(text.c_str(), stdout);
    return report.hasFaults() ? kFaulty : kClean;
}

int runCheck(const CheckOptions& options)
{
    Displays displays(options.plugin);
    int worst = kClean;
    for (const std::string& path : options.files) {
        try {
            const std::vector<std::uint8_t> bytes = readFile(path);
            const int result = isJson(bytes)
                ? checkJson(path, std::string(bytes.begin(), bytes.end()), displays)
                : checkBytes(path, bytes, displays);
            worst = std::max(worst, result);
        } catch (const std::exception& error) {
            std::fprintf(stderr, "zkrt46: %s\n", error.what());
            worst = kUnreadable;
        }
    }
    return worst;
}

}  // namespace

void addCheckCommand(CLI::App& app, Action& action)
{
    auto options = std::make_shared<CheckOptions>();
    CLI::App& command = *app.add_subcommand(
        "check",
        "Say what is wrong with preset and bank files, and what the plug-in makes of them; "
        "the exit code is 1 where there are faults, 2 where a file cannot be read");
    command
        .add_option("FILE", options->files,
                    "Presets (.zkr), banks (.zkb), either as .json, states of projects ("
                        + std::to_string(kStateSize)
                        + " bytes), or values of the plug-in's own store")
        ->required();
    addPluginOption(command, options->plugin);
    command.callback([options, &action] { action = [options] { return runCheck(*options); }; });
}

}  // namespace tool
