#include "tools/commands/Commands.h"

#include "tools/host/OpenPlugin.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <nlohmann/json.hpp>

namespace tool {

namespace {

// Empty without one.
std::string pluginOfEnvironment()
{
    const char* chosen = std::getenv("ZKRT46_PLUGIN");
    return chosen ? chosen : "";
}

std::string defaultPlugin()
{
    const std::string chosen = pluginOfEnvironment();
    if (!chosen.empty())
        return chosen;
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::filesystem::path beside = self.parent_path() / "ZKRT46.so";
    // Installed packages have the library in lib/vst.
    const std::filesystem::path packaged = self.parent_path() / "../lib/vst/ZKRT46.so";
    return (exists(beside, error) || !exists(packaged, error) ? beside : packaged).string();
}

}  // namespace

// CLI::Range, but with a message that has no more decimals than the limits.
CLI::Validator numberRange(double lowest, double highest)
{
    char limits[64];
    std::snprintf(limits, sizeof(limits), "%.10g to %.10g", lowest, highest);
    return CLI::Validator(
        [lowest, highest, words = std::string(limits)](std::string& text) {
            // CLI::Range takes what is not a number for one within it.
            double value = 0.0;
            const bool inside =
                CLI::detail::lexical_cast(text, value) && value >= lowest && value <= highest;
            return inside ? "" : "'" + text + "' is not in range " + words;
        },
        CLI::Range(lowest, highest).get_description());
}

void addPluginOption(CLI::App& command, std::string& path)
{
    path = defaultPlugin();
    command
        .add_option("--plugin", path,
                    "The plug-in's library (.so, .dll) instead of the usual one; "
                    "'zkrt46 --help' tells more")
        ->type_name("FILE");
}

std::string missingPluginHint(const std::string& path)
{
    if (path != defaultPlugin())
        return "";
    return pluginOfEnvironment().empty()
        ? ", nor is it in ../lib/vst; choose one with --plugin or ZKRT46_PLUGIN"
        : ", which ZKRT46_PLUGIN names";
}

void addSetOption(CLI::App& command, std::vector<std::string>& settings)
{
    command
        .add_option(
            "--set", settings,
            "TITLE=VALUE as the plug-in shows it, such as LFreq=82 for both channels, LFreqL=82 "
            "for the left one, or Channel=Side; or a normalised value such as LGain=0.75n; "
            "may be repeated")
        ->allow_extra_args(false)
        ->type_name("TITLE=VALUE");
}

void addJsonFlag(CLI::App& command, bool& wanted)
{
    command.add_flag("--json", wanted, "Print JSON for other programs");
}

void printJson(const nlohmann::ordered_json& value)
{
    using Json = nlohmann::ordered_json;
    std::printf("%s\n", value.dump(2, ' ', false, Json::error_handler_t::replace).c_str());
}

ParameterText openParameterText(const std::string& pluginPath)
{
    return ParameterText(host::openPlugin(pluginPath));
}

std::vector<Assignment> parseSettings(const std::vector<std::string>& settings,
                                      ParameterText& parameters)
{
    std::vector<Assignment> assignments;
    for (const std::string& setting : settings)
        append(assignments, parameters.parse(setting));
    return assignments;
}

void append(std::vector<Assignment>& assignments, const std::vector<Assignment>& more)
{
    assignments.insert(assignments.end(), more.begin(), more.end());
}

std::string decibelText(double linear, int decimals)
{
    if (!(linear > 0.0))
        return "-inf";
    char text[64];
    std::snprintf(text, sizeof(text), "%.*f", decimals, 20.0 * std::log10(linear));
    return text;
}

}  // namespace tool
