// Win32KeyboardLoan: the keyboard for a text box in a frame's window while it is open.
#pragma once

#include <windows.h>

namespace VSTGUI {

class Win32KeyboardLoan {
public:
    void take(HWND box) { before = SetFocus(box); }
    // To the window that had it, or to the host's where that one is gone. Nothing when somebody
    // else has it by now.
    void giveBack(HWND box) const
    {
        if (GetFocus() == box)
            SetFocus(IsWindow(before) ? before : GetParent(GetParent(box)));
    }

private:
    HWND before{nullptr};
};

}  // namespace VSTGUI
