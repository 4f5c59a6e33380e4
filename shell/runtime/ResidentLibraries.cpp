// Keeps the system's drawing library loaded when the plug-in is unloaded.
//
// cairo and its libraries (pixman, fontconfig, FreeType, Xlib) allocate memory when they are loaded
// and used, and free none of it when they are unloaded: 12 kB after every loading, and about half a
// megabyte after an editor was open. If they stay loaded, a process loses that memory only once.
// The plug-in itself is unloaded: otherwise the system would go on using the old library after its
// file has been replaced.
#include <dlfcn.h>

__attribute__((constructor)) static void keepDrawingLibrary()
{
    if (void* const library = dlopen("libcairo.so.2", RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE))
        dlclose(library);
}
