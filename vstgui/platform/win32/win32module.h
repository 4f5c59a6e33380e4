// The module whose pictures and window class the toolkit uses. Set by the editor of the plug-in
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
