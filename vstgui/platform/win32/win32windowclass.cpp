// Win32WindowClass: counted registration under a name that is unique in the process.
#include "vstgui/platform/win32/win32windowclass.h"

#include "vstgui/platform/win32/win32module.h"

#include <cwchar>

namespace VSTGUI {

namespace {

// User-interface thread only.
int users = 0;
ATOM registered = 0;

ATOM registerClass(WNDPROC procedure)
{
    wchar_t name[64];
    std::swprintf(name, 64, L"ZKRFrame%p", static_cast<const void*>(&users));
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.style = CS_DBLCLKS;
    description.lpfnWndProc = procedure;
    description.hInstance = moduleHandle();
    description.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // the arrow
    description.lpszClassName = name;
    return RegisterClassExW(&description);
}

}  // namespace

Win32WindowClass::Win32WindowClass(WNDPROC procedure)
{
    if (users++ == 0)
        registered = registerClass(procedure);
}

Win32WindowClass::~Win32WindowClass()
{
    if (--users > 0 || !registered)
        return;
    UnregisterClassW(getName(), moduleHandle());
    registered = 0;
}

LPCWSTR Win32WindowClass::getName() const
{
    return MAKEINTATOM(registered);
}

}  // namespace VSTGUI
