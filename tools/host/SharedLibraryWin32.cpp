// Loading libraries with LoadLibraryW.
#include "tools/host/HostError.h"
#include "tools/host/SharedLibrary.h"

#include <filesystem>
#include <system_error>
#include <windows.h>

namespace host {

namespace {

std::string reasonOf(DWORD error)
{
    switch (error) {
    case ERROR_BAD_EXE_FORMAT:
        return "it is not a 64-bit Windows library";
    case ERROR_MOD_NOT_FOUND:
        return "a library that it needs is missing";
    case ERROR_DLL_INIT_FAILED:
        return "its start-up failed";
    default:
        return "Windows error " + std::to_string(error);
    }
}

}  // namespace

SharedLibrary::SharedLibrary(const std::string& path) : handle(nullptr)
{
    // With the altered search path, libraries in the same folder are found.
    std::error_code error;
    const std::filesystem::path full =
        std::filesystem::absolute(std::filesystem::u8path(path), error);
    if (error || !std::filesystem::exists(full, error))
        throw NoSuchPlugin(path);
    handle = LoadLibraryExW(full.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!handle)
        throw HostError("cannot load '" + path + "': " + reasonOf(GetLastError()));
}

SharedLibrary::~SharedLibrary()
{
    FreeLibrary(static_cast<HMODULE>(handle));
}

void* SharedLibrary::find(const char* name) const
{
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle), name));
}

}  // namespace host
