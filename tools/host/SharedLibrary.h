// SharedLibrary: a dynamic library, loaded during the object's lifetime.
#pragma once

#include <string>

namespace host {

class SharedLibrary {
public:
    // Takes a UTF-8 path, relative or absolute; never searches the system's library folders.
    // Throws HostError with the system's reason when the library cannot be loaded.
    explicit SharedLibrary(const std::string& path);
    ~SharedLibrary();
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;

    // The address of an exported name, or null.
    void* find(const char* name) const;

private:
    void* handle;
};

}  // namespace host
