// Win32OptionMenu: shows a menu as a popup menu of the system.
#pragma once

#include "vstgui/platform/iplatformoptionmenu.h"

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

// Opens the menu at that point of the screen and returns the command chosen, or 0. The release of
// the press that opened the menu does not choose the entry under the pointer.
UINT trackMenuIgnoringOpeningClick(HMENU menu, const POINT& where, HWND owner);

}  // namespace VSTGUI
