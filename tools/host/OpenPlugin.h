// Opening a plug-in by its file name.
#pragma once

#include "tools/host/Plugin.h"

#include <memory>
#include <string>

namespace host {

// A library of this system is loaded into the process. On Linux, a name ending in .dll goes through
// Wine instead. Throws HostError.
std::unique_ptr<Plugin> openPlugin(const std::string& path, const HostSettings& settings = {});

}  // namespace host
