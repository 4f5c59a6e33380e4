// A window of Windows. Input is put into the queue, which the host's idle calls empty.
#include "EditorWindow.h"

#include <windows.h>

void EditorWindow::open(int width, int height)
{
    constexpr wchar_t kClass[] = L"ZkrT46Soak";
    WNDCLASSW description{};
    description.lpfnWndProc = DefWindowProcW;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = kClass;
    RegisterClassW(&description);
    window = CreateWindowExW(WS_EX_NOACTIVATE, kClass, L"ZKR T46", WS_POPUP | WS_CLIPCHILDREN, 0, 0,
                             width, height, nullptr, nullptr, description.hInstance, nullptr);
    if (window)
        ShowWindow(static_cast<HWND>(window), SW_SHOWNOACTIVATE);
}

void EditorWindow::resize(int width, int height)
{
    SetWindowPos(static_cast<HWND>(window), nullptr, 0, 0, width, height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void EditorWindow::close()
{
    DestroyWindow(static_cast<HWND>(window));
}

void EditorWindow::send(Act act, int x, int y)
{
    constexpr UINT kMessages[] = {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_MOUSEWHEEL,
                                  WM_MOUSEWHEEL};
    held = act == Act::Press || (held && act != Act::Release);
    WPARAM what = held ? MK_LBUTTON : 0;
    POINT where{x, y};
    if (act == Act::WheelUp || act == Act::WheelDown) {
        ClientToScreen(static_cast<HWND>(window), &where);
        const int distance = act == Act::WheelUp ? WHEEL_DELTA : -WHEEL_DELTA;
        what = MAKEWPARAM(what, static_cast<WORD>(distance));
    }
    if (const HWND child = GetWindow(static_cast<HWND>(window), GW_CHILD))
        PostMessageW(child, kMessages[static_cast<int>(act)], what,
                     MAKELPARAM(static_cast<WORD>(where.x), static_cast<WORD>(where.y)));
}
