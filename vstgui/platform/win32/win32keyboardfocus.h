// Win32KeyboardFocus: takes the keyboard focus for a text box and returns it when the box closes.
#pragma once

#include <windows.h>

namespace VSTGUI {

class Win32KeyboardFocus {
public:
    void take(HWND box) { before = SetFocus(box); }
    // Returns the focus to the window that had it before, or to the host's if that one is gone. No
    // effect if the box no longer has the focus.
    void giveBack(HWND box) const
    {
        if (GetFocus() == box)
            SetFocus(IsWindow(before) ? before : GetParent(GetParent(box)));
    }

private:
    HWND before{nullptr};
};

}  // namespace VSTGUI
