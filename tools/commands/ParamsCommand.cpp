// zkrt46 params: the plug-in's parameters as a host sees them.
#include "tools/banks/BankJson.h"
#include "tools/commands/Commands.h"
#include "tools/commands/PresetChoice.h"

#include <cstdio>

#include <nlohmann/json.hpp>

namespace tool {

namespace {

struct ParamsOptions {
    std::string plugin;
    std::vector<std::string> titles;
    bool json = false;
};

// From the factory preset: the plug-in may start with a default that the user has stored.
std::vector<float> defaults(ParameterText& parameters)
{
    std::vector<float> values;
    for (const Assignment& assignment : factoryStart(parameters.fields()))
        values.push_back(assignment.value);
    for (int index = static_cast<int>(values.size()); index < parameters.count(); ++index)
        values.push_back(parameters.initialValue(index));
    return values;
}

nlohmann::ordered_json asJson(ParameterText& parameters, const std::vector<int>& wanted)
{
    const std::vector<float> values = defaults(parameters);
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const int index : wanted) {
        const float value = values[static_cast<std::size_t>(index)];
        list.push_back({{"index", index},
                        {"title", parameters.title(index)},
                        {"unit", parameters.unit(index)},
                        {"steps", parameters.steps(index)},
                        {"default", parameters.displayAt(index, value)},
                        {"defaultNormalised", std::stod(storedText(value))},
                        {"values", parameters.displays(index)}});
    }
    return list;
}

// All values of a parameter with up to 12 steps, else the first and last.
std::string valueList(ParameterText& parameters, int index)
{
    constexpr int kFewSteps = 12;
    if (parameters.steps(index) < 1 || parameters.steps(index) > kFewSteps)
        return parameters.displayAt(index, 0.0f) + " to " + parameters.displayAt(index, 1.0f);
    std::string list;
    for (const std::string& display : parameters.displays(index))
        list += (list.empty() ? "" : ", ") + display;
    return list;
}

void printTable(ParameterText& parameters)
{
    std::printf("%5s  %-8s  %5s  %-10s  %-4s  %s\n", "Index", "Title", "Steps", "Default", "Unit",
                "Values");
    const std::vector<float> values = defaults(parameters);
    for (int index = 0; index < parameters.count(); ++index) {
        const std::string initial =
            parameters.displayAt(index, values[static_cast<std::size_t>(index)]);
        std::printf("%5d  %-8s  %5d  %-10s  %-4s  %s\n", index, parameters.title(index).c_str(),
                    parameters.steps(index), initial.c_str(), parameters.unit(index).c_str(),
                    valueList(parameters, index).c_str());
    }
}

void printValues(ParameterText& parameters, int index)
{
    const std::string unit = parameters.unit(index);
    std::printf("%s%s:", parameters.title(index).c_str(),
                unit.empty() ? "" : (" (" + unit + ")").c_str());
    // Ten per line, since gains have hundreds.
    const std::vector<std::string>& displays = parameters.displays(index);
    for (std::size_t step = 0; step < displays.size(); ++step)
        std::printf("%s%s", step % 10 == 0 && displays.size() > 16 ? "\n  " : " ",
                    displays[step].c_str());
    std::printf("\n");
}

int runParams(const ParamsOptions& options)
{
    ParameterText parameters = openParameterText(options.plugin);
    std::vector<int> wanted;
    for (const std::string& title : options.titles)
        for (const int index : parameters.indicesOf(title))
            wanted.push_back(index);
    if (options.json) {
        for (int index = 0; options.titles.empty() && index < parameters.count(); ++index)
            wanted.push_back(index);
        printJson(asJson(parameters, wanted));
        return 0;
    }
    if (wanted.empty())
        printTable(parameters);
    for (const int index : wanted)
        printValues(parameters, index);
    return 0;
}

}  // namespace

void addParamsCommand(CLI::App& app, Action& action)
{
    auto options = std::make_shared<ParamsOptions>();
    CLI::App& command = *app.add_subcommand("params", "List the parameters");
    command.add_option("TITLE", options->titles, "List every value of these instead of the table")
        ->type_name("TITLE");
    addJsonFlag(command, options->json);
    addPluginOption(command, options->plugin);
    command.callback([options, &action] { action = [options] { return runParams(*options); }; });
}

}  // namespace tool
