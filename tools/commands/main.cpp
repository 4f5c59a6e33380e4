// zkrt46: loads the plug-in as a host does, renders audio through it and measures it, and converts
// and checks its preset and bank files.
#include "tools/commands/Commands.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace {

constexpr int kBadInput = 2;

// Prints the message on one line, with control characters replaced by spaces.
int reportError(std::string message)
{
    while (!message.empty() && message.back() == '\n')
        message.pop_back();
    for (char& c : message)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            c = ' ';
    std::fprintf(stderr, "zkrt46: %s\n", message.c_str());
    return kBadInput;
}

// The error message for an unknown or incomplete command; else empty.
std::string commandError(CLI::App& app, const std::vector<std::string>& words)
{
    CLI::App* group = &app;
    std::string typed, program = "zkrt46";
    for (const std::string& word : words) {
        const auto commands = group->get_subcommands([](CLI::App*) { return true; });
        if (commands.empty() || (!word.empty() && word[0] == '-'))
            return "";
        typed += (typed.empty() ? "" : " ") + word;
        const auto found =
            std::find_if(commands.begin(), commands.end(),
                         [&](const CLI::App* command) { return command->get_name() == word; });
        if (found == commands.end())
            return "there is no command '" + typed + "'; '" + program + " --help' lists them";
        group = *found;
        program += " " + word;
    }
    const bool complete = group->get_subcommands([](CLI::App*) { return true; }).empty();
    const std::string missing = typed.empty() ? "no command" : "'" + typed + "' needs a command";
    return complete ? "" : missing + "; '" + program + " --help' lists them";
}

}  // namespace

int main(int argc, char** argv)
{
    CLI::App app(
        "Renders audio through the ZKR T46 mastering equaliser, measures it, and works on its "
        "presets.",
        "zkrt46");
    app.require_subcommand(1);
    app.set_help_all_flag("--help-all", "Print the help of every command");
    tool::Action action;
    tool::addRenderCommand(app, action);
    tool::addParamsCommand(app, action);
    tool::addInfoCommand(app, action);
    tool::addLatencyCommand(app, action);
    tool::addResponseCommand(app, action);
    tool::addHarmonicsCommand(app, action);
    tool::addPresetCommand(app, action);
    tool::addBankCommand(app, action);
    tool::addCheckCommand(app, action);
    tool::addEditCommand(app, action);
    tool::addScreenshotCommand(app, action);
    const std::string wrongCommand = commandError(app, {argv + 1, argv + argc});
    if (!wrongCommand.empty())
        return reportError(wrongCommand);
    try {
        app.parse(argc, argv);
        const int result = action();
        if (std::fflush(stdout) != 0)
            return reportError("cannot write to the standard output");
        return result;
    } catch (const CLI::Success& helpRequest) {
        return app.exit(helpRequest);
    } catch (const std::exception& error) {
        return reportError(error.what());
    }
}
