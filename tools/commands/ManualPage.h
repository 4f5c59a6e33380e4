// The manual page zkrt46(1).
#pragma once

#include "tools/commands/CommandDescription.h"

namespace tool {

// In the macros of man(7); `day` as YYYY-MM-DD.
std::string manualPage(const CommandDescription& program, const std::string& day);

}  // namespace tool
