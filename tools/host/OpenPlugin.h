// openPlugin: opens a plug-in by its file name.
#pragma once

#include "tools/host/Plugin.h"

#include <memory>
#include <string>

namespace host {

// Loads a library of this system into the process, and on Linux a file ending in .dll through Wine.
// Throws HostError.
std::unique_ptr<Plugin> openPlugin(const std::string& path, const HostSettings& settings = {});

}  // namespace host
