// The module that holds the toolkit's pictures and window class. The plug-in's editor sets it
// before the first window or picture.
#pragma once

#include <windows.h>

extern void* hInstance;

namespace VSTGUI {

inline HINSTANCE moduleHandle()
{
    return static_cast<HINSTANCE>(hInstance);
}

}  // namespace VSTGUI
