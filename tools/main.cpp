// zkrt46: renders audio through the plug-in and measures it, loaded as any host loads it.
#include "Commands.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>

namespace {

constexpr int kBadInput = 2;

// Whatever went wrong fits on one line, and nothing in it moves the cursor.
int complain(std::string message)
{
    while (!message.empty() && message.back() == '\n')
        message.pop_back();
    for (char& c : message)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            c = ' ';
    std::fprintf(stderr, "zkrt46: %s\n", message.c_str());
    return kBadInput;
}

bool isCommand(CLI::App& app, const std::string& word)
{
    const auto commands = app.get_subcommands([](CLI::App*) { return true; });
    return std::any_of(commands.begin(), commands.end(),
                       [&](const CLI::App* command) { return command->get_name() == word; });
}

}  // namespace

int main(int argc, char** argv)
{
    CLI::App app("Renders audio through the ZKR T46 mastering equaliser and measures it.",
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
    if (argc == 1)
        return complain("no command; 'zkrt46 --help' lists them");
    if (argv[1][0] != '-' && !isCommand(app, argv[1]))
        return complain("there is no command '" + std::string(argv[1])
                        + "'; 'zkrt46 --help' lists them");
    try {
        app.parse(argc, argv);
        const int result = action();
        if (std::fflush(stdout) != 0)
            return complain("cannot write to the standard output");
        return result;
    } catch (const CLI::Success& helpWanted) {
        return app.exit(helpWanted);
    } catch (const std::exception& error) {
        return complain(error.what());
    }
}
