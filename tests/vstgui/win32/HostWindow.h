// HostWindow: stands for a host with a window on the screen, a user with mouse and keyboard, and
// the message loop between them.
#pragma once

#include "vstgui/platform/pixels.h"

#include <functional>
#include <string>
#include <windows.h>

// At (kHostX, kHostY) of the screen, without decoration.
constexpr int kHostX = 300;
constexpr int kHostY = 200;

class HostWindow {
public:
    explicit HostWindow(int width = 400, int height = 300);
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    HWND handle() const { return window; }
    // As hosts do that do not ask first.
    void destroy();
    // The keyboard goes to the host itself.
    void takeFocus() { SetFocus(window); }

    // The user, in coordinates of the host's inside. Delivered by the system; pump afterwards.
    void movePointer(int x, int y) const;
    void pressButton(DWORD flag = MOUSEEVENTF_LEFTDOWN) const;
    void releaseButton(DWORD flag = MOUSEEVENTF_LEFTUP) const;
    void click(int x, int y) const;
    static void pressKey(WORD virtualKey);
    // UTF-16 units as an input method sends them.
    static void type(const std::wstring& text);

    // What the screen shows of the host's inside.
    VSTGUI::Pixels screenshot() const;

private:
    HWND window;
};

// Runs the message loop for so long, or until the condition holds. Returns whether it does.
void pump(int milliseconds = 60);
bool pumpUntil(const std::function<bool()>& condition, int milliseconds = 3000);
