// A window, input by SendInput, and reading the screen.
#include "HostWindow.h"

using VSTGUI::CColor;
using VSTGUI::Pixels;

namespace {

constexpr wchar_t kClass[] = L"TestHost";

void send(const INPUT& input)
{
    INPUT copy = input;
    SendInput(1, &copy, sizeof copy);
}

void sendMouse(DWORD flags, int x = 0, int y = 0)
{
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    // The whole screen is 65536 wide and high; aim at the middle of the pixel.
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const int height = GetSystemMetrics(SM_CYSCREEN);
    input.mi.dx = (x * 65536 + 32768) / width;
    input.mi.dy = (y * 65536 + 32768) / height;
    send(input);
}

void sendKey(WORD virtualKey, WORD unit, DWORD flags)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = virtualKey;
    input.ki.wScan = unit;
    input.ki.dwFlags = flags;
    send(input);
}

}  // namespace

HostWindow::HostWindow(int width, int height)
{
    WNDCLASSW description{};
    description.lpfnWndProc = DefWindowProcW;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hbrBackground = static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH));
    description.lpszClassName = kClass;
    RegisterClassW(&description);
    window = CreateWindowExW(0, kClass, L"Host", WS_POPUP | WS_CLIPCHILDREN, kHostX, kHostY, width,
                             height, nullptr, nullptr, description.hInstance, nullptr);
    // Shown first and activated then, Wine keeps the window away from window managers and from
    // waiting for one.
    ShowWindow(window, SW_SHOWNOACTIVATE);
    SetForegroundWindow(window);
    SetFocus(window);
    pump();
}

HostWindow::~HostWindow()
{
    destroy();
    pump(10);
    UnregisterClassW(kClass, GetModuleHandleW(nullptr));
}

void HostWindow::destroy()
{
    if (window)
        DestroyWindow(window);
    window = nullptr;
}

void HostWindow::movePointer(int x, int y) const
{
    sendMouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, kHostX + x, kHostY + y);
}

void HostWindow::pressButton(DWORD flag) const
{
    sendMouse(flag);
}

void HostWindow::releaseButton(DWORD flag) const
{
    sendMouse(flag);
}

void HostWindow::click(int x, int y) const
{
    movePointer(x, y);
    pressButton();
    releaseButton();
}

void HostWindow::pressKey(WORD virtualKey)
{
    sendKey(virtualKey, 0, 0);
    sendKey(virtualKey, 0, KEYEVENTF_KEYUP);
}

void HostWindow::type(const std::wstring& text)
{
    for (const wchar_t unit : text) {
        sendKey(0, unit, KEYEVENTF_UNICODE);
        sendKey(0, unit, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP);
    }
}

Pixels HostWindow::screenshot() const
{
    RECT client;
    GetClientRect(window, &client);
    Pixels picture(client.right, client.bottom);
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, client.right, client.bottom);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, client.right, client.bottom, screen, kHostX, kHostY, SRCCOPY);
    for (int y = 0; y < client.bottom; ++y) {
        for (int x = 0; x < client.right; ++x) {
            const COLORREF c = GetPixel(memory, x, y);
            picture.set(x, y, CColor(GetRValue(c), GetGValue(c), GetBValue(c)));
        }
    }
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return picture;
}

void pump(int milliseconds)
{
    pumpUntil([] { return false; }, milliseconds);
}

bool pumpUntil(const std::function<bool()>& condition, int milliseconds)
{
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
    for (;;) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        if (condition())
            return true;
        if (GetTickCount64() >= end)
            return false;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
    }
}
