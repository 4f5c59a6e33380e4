// Win32WindowClass: the window class of the frames, registered while an object exists.
#pragma once

#include <windows.h>

namespace VSTGUI {

class Win32WindowClass {
public:
    // The procedure is the same for all objects.
    explicit Win32WindowClass(WNDPROC procedure);
    ~Win32WindowClass();
    Win32WindowClass(const Win32WindowClass&) = delete;
    Win32WindowClass& operator=(const Win32WindowClass&) = delete;

    // Null when it could not be registered.
    LPCWSTR getName() const;
};

}  // namespace VSTGUI
