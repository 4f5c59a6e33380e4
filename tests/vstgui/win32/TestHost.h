// TestHost: a host's window on the screen, the user with mouse and keyboard who works in it, and
// the message loop between them.
#pragma once

#include "HostWindow.h"

#include <functional>
#include <string>
#include <windows.h>

// Where it stands on the screen, and its size.
constexpr int kHostX = 300, kHostY = 200;
constexpr int kHostWidth = 400, kHostHeight = 300;

// Runs the message loop for so long, or until the condition holds. Returns whether it does.
inline bool pumpUntil(const std::function<bool()>& condition, int milliseconds = 3000)
{
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
    for (;;) {
        turnMessageLoop();
        if (condition())
            return true;
        if (GetTickCount64() >= end)
            return false;
    }
}

inline void pump(int milliseconds = 60)
{
    pumpUntil([] { return false; }, milliseconds);
}

class TestHost : public HostWindow {
public:
    TestHost() : HostWindow({kHostX, kHostY}, kHostWidth, kHostHeight)
    {
        takeFocus();
        pump();
    }
    ~TestHost()
    {
        destroy();
        pump(10);
    }

    HWND handle() const { return static_cast<HWND>(HostWindow::handle()); }
    // The keyboard goes to the host itself.
    void takeFocus() { SetFocus(handle()); }

    // The user, in coordinates of the host's inside. Delivered by the system; pump afterwards.
    void movePointer(int x, int y) const { hands::movePointer({kHostX + x, kHostY + y}); }
    void pressButton(hands::Button which = hands::Button::Left) const
    {
        hands::button(which, true);
    }
    void releaseButton(hands::Button which = hands::Button::Left) const
    {
        hands::button(which, false);
    }
    void click(int x, int y) const
    {
        movePointer(x, y);
        pressButton();
        releaseButton();
    }
    static void pressKey(WORD virtualKey) { sendKey(virtualKey, 0, 0); }
    // UTF-16 units as an input method sends them.
    static void type(const std::wstring& text)
    {
        for (const wchar_t unit : text)
            sendKey(0, unit, KEYEVENTF_UNICODE);
    }

    // What the screen shows of the host's inside.
    VSTGUI::Pixels screenshot() const
    {
        return ::screenshot({kHostX, kHostY}, kHostWidth, kHostHeight);
    }

private:
    static void sendKey(WORD virtualKey, WORD unit, DWORD flags)
    {
        for (const DWORD up : {DWORD(0), DWORD(KEYEVENTF_KEYUP)}) {
            INPUT input{};
            input.type = INPUT_KEYBOARD;
            input.ki = {virtualKey, unit, flags | up, 0, 0};
            SendInput(1, &input, sizeof input);
        }
    }
};
