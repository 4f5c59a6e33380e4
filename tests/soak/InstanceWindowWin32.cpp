// Input on Windows, posted to the message queue, which the host's idle calls process.
#include "tests/soak/InstanceWindow.h"

#include <windows.h>

void InstanceWindow::send(Act act, int x, int y)
{
    constexpr UINT kMessages[] = {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_MOUSEWHEEL,
                                  WM_MOUSEWHEEL};
    const auto host = static_cast<HWND>(window.handle());
    held = act == Act::Press || (held && act != Act::Release);
    WPARAM what = held ? MK_LBUTTON : 0;
    POINT where{x, y};
    if (act == Act::WheelUp || act == Act::WheelDown) {
        ClientToScreen(host, &where);
        const int distance = act == Act::WheelUp ? WHEEL_DELTA : -WHEEL_DELTA;
        what = MAKEWPARAM(what, static_cast<WORD>(distance));
    }
    if (const HWND child = GetWindow(host, GW_CHILD))
        PostMessageW(child, kMessages[static_cast<int>(act)], what,
                     MAKELPARAM(static_cast<WORD>(where.x), static_cast<WORD>(where.y)));
}
