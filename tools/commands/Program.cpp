#include "tools/commands/Program.h"

#include "Product.h"
#include "tools/commands/Commands.h"
#include "tools/commands/Completion.h"
#include "tools/commands/HelpText.h"
#include "tools/commands/ManualPage.h"
#include "tools/common/ToolError.h"
#include "tools/host/HostError.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kBadInput = 2;

// Without this, a file that the program writes could take the number of a standard stream that is
// closed, and get the messages for it. What uses such a stream still fails.
void keepStandardStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) < 0)
            open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

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

// The program's exit code, when all that it printed was written.
int finish(int result)
{
    std::cout.flush();
    if (!std::cout || std::fflush(stdout) != 0)
        return reportError("cannot write to the standard output");
    return result;
}

// The help of the command that the line names.
std::string help(const CLI::App* command, const std::string&, CLI::AppFormatMode mode)
{
    std::string parents;
    for (const CLI::App* above = command->get_parent(); above; above = above->get_parent())
        parents = above->get_name() + (parents.empty() ? "" : " ") + parents;
    const tool::CommandDescription description = tool::describe(*command, parents);
    return mode == CLI::AppFormatMode::All ? tool::wholeHelpText(description, tool::terminalWidth())
                                           : tool::helpText(description, tool::terminalWidth());
}

// Hidden options that print files of the packages.
void addGenerators(CLI::App& app)
{
    app.add_option_function<std::string>(
           "--manual-page",
           [&app](const std::string& day) {
               throw CLI::CallForVersion(tool::manualPage(tool::describe(app), day), 0);
           },
           "The manual page, of that day")
        ->group("");
    app.add_option_function<std::string>(
           "--completion",
           [&app](const std::string& shell) {
               throw CLI::CallForVersion(tool::completionScript(shell, tool::describe(app)), 0);
           },
           "The completion for a shell")
        ->check(CLI::IsMember({"bash", "zsh", "fish"}))
        ->group("");
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

// An empty value, as of a shell's variable that is not set, must not count as an option not given.
// A text may be empty.
void refuseEmptyValues(const CLI::App& app)
{
    for (const CLI::App* const command : app.get_subcommands())
        refuseEmptyValues(*command);
    for (const CLI::Option* const option : app.get_options())
        for (const std::string& value : option->results())
            if (value.empty() && option->get_type_name() != "TEXT")
                throw tool::ToolError("the value of " + option->get_name() + " is empty");
}

}  // namespace

namespace tool {

int runProgram(int argc, char** argv)
{
    keepStandardStreams();
    CLI::App app(
        "Renders audio through the ZKR T46 mastering equaliser, measures it, and works on its "
        "presets.",
        "zkrt46");
    app.require_subcommand(1);
    app.formatter_fn(help);
    app.set_help_flag("-h,--help", "Print this help");
    app.set_version_flag("--version", std::string("zkrt46 ") + product::kVersion,
                         "Print the version");
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
    // These are not for the commands, which would inherit them.
    app.footer(std::string(tool::kPluginText) + "\n\n" + tool::kExitText);
    app.set_help_all_flag("--help-all", "Print the help of every command");
    addGenerators(app);
    const std::string wrongCommand = commandError(app, {argv + 1, argv + argc});
    if (!wrongCommand.empty())
        return reportError(wrongCommand);
    try {
        app.parse(argc, argv);
        refuseEmptyValues(app);
        return finish(action());
    } catch (const CLI::Success& request) {
        return finish(app.exit(request));
    } catch (const host::NoSuchPlugin& error) {
        return reportError(error.what() + tool::missingPluginHint(error.path));
    } catch (const std::exception& error) {
        return reportError(error.what());
    }
}

}  // namespace tool
