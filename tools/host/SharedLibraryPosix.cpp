// Loading libraries with dlopen.
#include "tools/host/HostError.h"
#include "tools/host/SharedLibrary.h"

#include <dlfcn.h>
#include <filesystem>
#include <system_error>

namespace host {

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kLeaksAreChecked = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kLeaksAreChecked = true;
#else
constexpr bool kLeaksAreChecked = false;
#endif
#else
constexpr bool kLeaksAreChecked = false;
#endif

}  // namespace

SharedLibrary::SharedLibrary(const std::string& path) : handle(nullptr)
{
    // An absolute path keeps dlopen from searching.
    std::error_code error;
    const std::filesystem::path full = std::filesystem::absolute(path, error);
    if (error || !std::filesystem::exists(full, error))
        throw NoSuchPlugin(path);
    if (!std::filesystem::is_regular_file(full, error))
        throw HostError("'" + path + "' is not a plug-in library");
    handle = dlopen(full.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        // dlerror begins with the path, which the message already has.
        const std::string reason = dlerror();
        const std::string prefix = full.string() + ": ";
        throw HostError("cannot load '" + path + "': "
                        + (reason.rfind(prefix, 0) == 0 ? reason.substr(prefix.size()) : reason));
    }
}

SharedLibrary::~SharedLibrary()
{
    // The leak checker runs at the program's end: memory that an unloaded library's variables point
    // to would count as lost, and its functions would have no names.
    if (!kLeaksAreChecked)
        dlclose(handle);
}

void* SharedLibrary::find(const char* name) const
{
    return dlsym(handle, name);
}

}  // namespace host
