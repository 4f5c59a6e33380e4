// Keeps the system's drawing library in the process when the plug-in goes.
//
// cairo and what it stands on (pixman, fontconfig, FreeType, Xlib) take memory when they are loaded
// and used, and free none of it when they are unloaded: 12 kB after every loading, and about half a
// megabyte after an editor was open. If they stay, they take it once in a process. The plug-in
// itself does not stay: the system would go on using the old library where a newer file has taken
// its place.
#include <dlfcn.h>

__attribute__((constructor)) static void keepDrawingLibrary()
{
    if (void* const library = dlopen("libcairo.so.2", RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE))
        dlclose(library);
}
