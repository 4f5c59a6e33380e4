#include "tools/commands/HelpText.h"

#include <algorithm>
#include <cstdlib>

#include <sys/ioctl.h>
#include <unistd.h>

namespace tool {

namespace {

constexpr std::size_t kDefaultWidth = 80;
constexpr std::size_t kNarrowest = 40;
constexpr std::size_t kNamesWidth = 26;  // of the column of names, with the space around it

// The name, and the text beside it; below it if the name is too long.
std::string entry(const std::string& name, const std::string& text, std::size_t width)
{
    const std::size_t column = std::min(kNamesWidth, width / 3);
    std::string lines = wrapped(text, width, std::string(column, ' '));
    const std::string head = "  " + name;
    if (head.size() + 2 > column)
        return head + "\n" + lines;
    return lines.replace(0, head.size(), head);
}

std::string entry(const OptionDescription& option, std::size_t width)
{
    std::string name;
    for (const std::string& word : option.names)
        name += (name.empty() ? "" : ", ") + word;
    name += (name.empty() || option.value.empty() ? "" : " ") + option.value;
    return entry(name + (option.isRepeatable ? " ..." : ""),
                 option.text + (option.isNamed() && option.isRequired ? ". Required" : ""), width);
}

}  // namespace

std::size_t terminalWidth()
{
    const char* columns = std::getenv("COLUMNS");
    const long number = columns ? std::strtol(columns, nullptr, 10) : 0;
    if (number > 0)
        return std::max(static_cast<std::size_t>(number), kNarrowest);
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0)
        return std::max(std::size_t{size.ws_col}, kNarrowest);
    return kDefaultWidth;
}

std::string helpText(const CommandDescription& command, std::size_t width)
{
    std::string text =
        wrapped(command.text, width) + "\n" + wrapped("Usage: " + command.usage(), width);
    for (const auto& [heading, options] :
         {std::pair{"Arguments:", command.arguments}, {"Options:", command.options}}) {
        if (options.empty())
            continue;
        text += std::string("\n") + heading + "\n";
        for (const OptionDescription& option : options)
            text += entry(option, width);
    }
    text += command.commands.empty() ? "" : "\nCommands:\n";
    for (const CommandDescription& inner : command.commands)
        text += entry(inner.name, inner.text, width);
    return text + (command.footer.empty() ? "" : "\n" + wrapped(command.footer, width));
}

std::string wholeHelpText(const CommandDescription& command, std::size_t width)
{
    std::string text = helpText(command, width);
    for (const CommandDescription& inner : command.commands)
        text += "\n\n" + wholeHelpText(inner, width);
    return text;
}

}  // namespace tool
