#include "tools/host/OpenPlugin.h"

#include "tools/host/NativePlugin.h"

#ifndef _WIN32
#include "tools/host/BridgedPlugin.h"

#include <filesystem>
#include <strings.h>
#endif

namespace host {

std::unique_ptr<Plugin> openPlugin(const std::string& path, const HostSettings& settings)
{
#ifndef _WIN32
    if (strcasecmp(std::filesystem::path(path).extension().c_str(), ".dll") == 0)
        return std::make_unique<BridgedPlugin>(path, settings);
#endif
    return std::make_unique<NativePlugin>(path, settings);
}

}  // namespace host
