// Win32OptionMenu: the entries of a menu in a popup menu of the system.
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

// Shows the menu at that point of the screen until something is chosen; the command, or 0. A menu
// that opens under the pointer must not take the release of the press that opened it for a choice.
UINT trackMenuIgnoringOpeningClick(HMENU menu, const POINT& where, HWND owner);

}  // namespace VSTGUI
