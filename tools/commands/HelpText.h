// The text of --help and --help-all.
#pragma once

#include "tools/commands/CommandDescription.h"

namespace tool {

// The number in the environment variable COLUMNS, else the terminal's width; 80 without a terminal.
std::size_t terminalWidth();

// Lines of at most `width` characters, except for words longer than the place beside the names.
std::string helpText(const CommandDescription& command, std::size_t width);
// With the help of every command below this one.
std::string wholeHelpText(const CommandDescription& command, std::size_t width);

}  // namespace tool
