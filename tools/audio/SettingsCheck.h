// Finds settings that change nothing, such as the gain of a band whose frequency is off.
#pragma once

#include "tools/audio/PluginRun.h"

#include <cstddef>
#include <vector>

namespace tool {

// The indices of those `groups` of settings that move a parameter from its value in `start` and
// leave the sound of a short noise the same whether they are applied or not with all the others in
// force.
std::vector<std::size_t> settingsWithoutEffect(host::Plugin& plugin,
                                               const std::vector<Assignment>& start,
                                               const std::vector<std::vector<Assignment>>& groups);

}  // namespace tool
