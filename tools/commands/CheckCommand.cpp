// zkrt46 check: what is wrong with preset and bank files.
#include "tools/banks/PresetFile.h"
#include "tools/commands/Commands.h"
#include "tools/common/ToolError.h"
#include "tools/host/HostError.h"

#include <algorithm>
#include <cstdio>

#include <nlohmann/json.hpp>

namespace tool {

namespace {

using Json = nlohmann::ordered_json;

struct CheckOptions {
    std::string plugin;
    std::vector<std::string> files;
    bool json = false;
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

const char* kindName(FileKind kind)
{
    switch (kind) {
    case FileKind::Preset:
        return "preset";
    case FileKind::Bank:
        return "bank";
    case FileKind::State:
        return "bank as a project keeps it";
    case FileKind::HostPreset:
        return "preset of a host";
    case FileKind::HostBank:
        return "bank of a host";
    case FileKind::Unknown:
        break;
    }
    return "";
}

// What was found in one file, as text and as JSON.
struct Result {
    int code;
    std::string text;
    Json json;
};

Result checkJson(const std::string& path, const std::string& text, Displays& displays)
{
    ParameterText& parameters = displays.get();
    bool preset = false;
    std::string fault;
    try {
        preset = isPresetJson(text, path);
        if (preset)
            presetFromJson(text, path, parameters);
        else
            bankFromJson(text, path, parameters);
    } catch (const ToolError& error) {
        fault = error.what();
    }
    Json findings = Json::array();
    if (!fault.empty())
        findings.push_back({{"fault", true}, {"byte", nullptr}, {"text", fault}});
    const char* kind = preset ? "preset" : "bank";
    return {fault.empty() ? kClean : kFaulty,
            fault.empty() ? path + ": " + kind + " in JSON: no faults\n" : fault + "\n",
            {{"file", path},
             {"kind", fault.empty() ? Json(kind) : Json()},
             {"bytes", text.size()},
             {"outcome", fault.empty() ? "no faults" : "it is refused"},
             {"findings", findings}}};
}

Result checkBytes(const std::string& path, const std::vector<std::uint8_t>& bytes,
                  Displays& displays)
{
    const BankReport report = checkBank({bytes.data(), bytes.size()}, titlesOf(displays));
    const std::string kind = kindName(report.kind);
    std::string text = path + ": " + kind + (kind.empty() ? "" : ", ")
        + std::to_string(bytes.size()) + " bytes: " + (report.hasFaults() ? "" : "no faults; ")
        + outcomeText(report) + "\n";
    Json findings = Json::array();
    for (const Finding& finding : report.findings) {
        text += std::string(finding.isFault ? "  fault" : "  note")
            + (finding.offset ? " " + atByte(*finding.offset) : "") + ": " + finding.text + "\n";
        findings.push_back({{"fault", finding.isFault},
                            {"byte", finding.offset ? Json(*finding.offset) : Json()},
                            {"text", finding.text}});
    }
    return {report.hasFaults() ? kFaulty : kClean,
            text,
            {{"file", path},
             {"kind", kind.empty() ? Json() : Json(kind)},
             {"bytes", bytes.size()},
             {"outcome", outcomeText(report)},
             {"findings", findings}}};
}

int runCheck(const CheckOptions& options)
{
    Displays displays(options.plugin);
    int worst = kClean;
    Json list = Json::array();
    for (const std::string& path : options.files) {
        try {
            const std::vector<std::uint8_t> bytes = readFile(path);
            const Result result = isJson(bytes)
                ? checkJson(path, std::string(bytes.begin(), bytes.end()), displays)
                : checkBytes(path, bytes, displays);
            worst = std::max(worst, result.code);
            if (!options.json)
                std::fputs(result.text.c_str(), stdout);
            list.push_back(result.json);
        } catch (const std::exception& error) {
            std::fprintf(stderr, "zkrt46: %s\n", error.what());
            worst = kUnreadable;
            list.push_back({{"file", path}, {"error", error.what()}});
        }
    }
    if (options.json)
        printJson(list);
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
        .add_option(
            "FILE", options->files,
            "Presets (.zkr, .fxp, .vstpreset), banks (.zkb, .fxb), either as .json, states of "
            "projects ("
                + std::to_string(kStateSize) + " bytes), or values of the plug-in's own store")
        ->required();
    addJsonFlag(command, options->json);
    bindAction(command, action, options, runCheck);
}

}  // namespace tool
