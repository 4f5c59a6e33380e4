// Win32OptionMenu: shows a menu as a popup menu of the system.
#pragma once

#include "vstgui/platform/iplatformoptionmenu.h"
#include "vstgui/platform/menuentries.h"

#include <windows.h>

namespace VSTGUI {

class Win32Frame;

class Win32OptionMenu : public IPlatformOptionMenu {
public:
    explicit Win32OptionMenu(Win32Frame* frame);
    ~Win32OptionMenu() override;

    PlatformOptionMenuResult popup(COptionMenu* menu) override;

private:
    SharedPointer<Win32Frame> frame;
};

// A menu of the system with the control's entries. An entry's command is its index plus 1.
class Win32Menu {
public:
    explicit Win32Menu(const COptionMenu& control);
    ~Win32Menu();
    Win32Menu(const Win32Menu&) = delete;
    Win32Menu& operator=(const Win32Menu&) = delete;

    HMENU getHandle() const { return handle; }

    // Answer the messages of the same names for an entry of such a menu.
    static void measure(MEASUREITEMSTRUCT& item);
    static void draw(const DRAWITEMSTRUCT& item);

private:
    void append(int32_t index);

    MenuEntries entries;
    int32_t perColumn;
    HMENU handle;
    HBRUSH backBrush;
};

// Opens the menu at that point of the screen and returns the command chosen, or 0. The release of
// the press that opened the menu does not choose the entry under the pointer.
UINT trackMenuIgnoringOpeningClick(HMENU menu, const POINT& where, HWND owner);

}  // namespace VSTGUI
