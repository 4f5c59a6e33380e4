#include "vstgui/platform/x11/libdbus.h"

#include <dlfcn.h>
#include <optional>

namespace VSTGUI {
namespace X11 {

namespace {

std::optional<LibDbus> loaded()
{
    // Stays loaded, since it keeps state of the whole process.
    void* const library = dlopen("libdbus-1.so.3", RTLD_NOW | RTLD_NODELETE);
    if (!library)
        return {};
    LibDbus functions{};
    bool complete = true;
#define ZKR_DBUS_FIND(name)                                                                        \
    functions.name = reinterpret_cast<decltype(&dbus_##name)>(dlsym(library, "dbus_" #name));      \
    complete = complete && functions.name;
    ZKR_DBUS_FUNCTIONS(ZKR_DBUS_FIND)
#undef ZKR_DBUS_FIND
    if (!complete)
        return {};
    return functions;
}

}  // namespace

const LibDbus* LibDbus::load()
{
    static const std::optional<LibDbus> library = loaded();
    return library ? &*library : nullptr;
}

}  // namespace X11
}  // namespace VSTGUI
