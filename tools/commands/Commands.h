// The commands of zkrt46. Each function adds a command to the command line, which stores its work
// in `action` when the command is given. An action returns the program's exit code.
#pragma once

#include "tools/audio/PluginRun.h"
#include "tools/common/ParameterText.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <nlohmann/json_fwd.hpp>

namespace tool {

using Action = std::function<int()>;

void addRenderCommand(CLI::App& app, Action& action);
void addParamsCommand(CLI::App& app, Action& action);
void addInfoCommand(CLI::App& app, Action& action);
void addLatencyCommand(CLI::App& app, Action& action);
void addResponseCommand(CLI::App& app, Action& action);
void addHarmonicsCommand(CLI::App& app, Action& action);
void addPresetCommand(CLI::App& app, Action& action);
void addBankCommand(CLI::App& app, Action& action);
void addCheckCommand(CLI::App& app, Action& action);
void addEditCommand(CLI::App& app, Action& action);
void addScreenshotCommand(CLI::App& app, Action& action);

// --- Shared by the commands ---

// A validator for numbers from `lowest` to `highest`.
CLI::Validator numberRange(double lowest, double highest);

// --plugin. Default: the environment's ZKRT46_PLUGIN, else the library beside this program.
void addPluginOption(CLI::App& command, std::string& path);
// The command takes --plugin, and calls `run` with the options that its line has filled in.
template <typename Options>
void bindAction(CLI::App& command, Action& action, const std::shared_ptr<Options>& options,
                int (*run)(const Options&))
{
    addPluginOption(command, options->plugin);
    command.callback(
        [options, run, &action] { action = [options, run] { return run(*options); }; });
}
// What to add to the message that there is no such plug-in: why that one was wanted, if it is not
// the choice of --plugin.
std::string missingPluginHint(const std::string& path);
// --set, any number of times.
void addSetOption(CLI::App& command, std::vector<std::string>& settings);

// --json
void addJsonFlag(CLI::App& command, bool& wanted);
// On standard output, with indented lines. Bytes that are not UTF-8 are replaced by U+FFFD.
void printJson(const nlohmann::ordered_json& value);

ParameterText openParameterText(const std::string& pluginPath);
std::vector<Assignment> parseSettings(const std::vector<std::string>& settings,
                                      ParameterText& parameters);

void append(std::vector<Assignment>& assignments, const std::vector<Assignment>& more);

// "-12.34"; "-inf" for silence.
std::string decibelText(double linear, int decimals = 2);

}  // namespace tool
