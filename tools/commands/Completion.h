// Completion of the command line in shells.
#pragma once

#include "tools/commands/CommandDescription.h"

namespace tool {

// The script that a shell reads: "bash", "zsh" or "fish".
std::string completionScript(const std::string& shell, const CommandDescription& program);

}  // namespace tool
