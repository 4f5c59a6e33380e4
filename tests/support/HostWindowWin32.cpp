#include "tests/support/HostWindow.h"

#include <utility>
#include <windows.h>

using VSTGUI::CColor;
using VSTGUI::Pixels;

// The toolkit's module handle; null, since the tests' pictures come from files.
void* hInstance = nullptr;

namespace {

constexpr wchar_t kClass[] = L"HostOfTheEditor";

HWND asWindow(void* handle)
{
    return static_cast<HWND>(handle);
}

// Counts key presses in the window's user data.
LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_KEYDOWN)
        SetWindowLongPtrW(window, GWLP_USERDATA, GetWindowLongPtrW(window, GWLP_USERDATA) + 1);
    return DefWindowProcW(window, message, wParam, lParam);
}

void sendMouse(DWORD flags, LONG dx, LONG dy, DWORD data)
{
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi = {dx, dy, data, flags, 0, 0};
    SendInput(1, &input, sizeof input);
}

void sendKey(WORD virtualKey, WORD unit, DWORD flags)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki = {virtualKey, unit, flags, 0, 0};
    SendInput(1, &input, sizeof input);
}

}  // namespace

HostWindow::HostWindow(Place corner, int width, int height) : window(nullptr)
{
    WNDCLASSW description{};
    description.lpfnWndProc = procedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    description.lpszClassName = kClass;
    RegisterClassW(&description);
    window = CreateWindowExW(0, kClass, L"Host", WS_POPUP | WS_CLIPCHILDREN, corner.x, corner.y,
                             width, height, nullptr, nullptr, description.hInstance, nullptr);
    // Shown first and activated afterwards, so that Wine leaves the window unmanaged and does not
    // wait for a window manager.
    ShowWindow(asWindow(window), SW_SHOWNOACTIVATE);
    SetForegroundWindow(asWindow(window));
    turnMessageLoop();
}

HostWindow::~HostWindow()
{
    destroy();
}

void HostWindow::resize(int width, int height)
{
    SetWindowPos(asWindow(window), nullptr, 0, 0, width, height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void HostWindow::destroy()
{
    if (window)
        DestroyWindow(asWindow(window));
    window = nullptr;
}

void HostWindow::destroyFromOutside()
{
    PostMessageW(asWindow(std::exchange(window, nullptr)), WM_CLOSE, 0, 0);
}

void HostWindow::takeKeyboard()
{
    SetFocus(asWindow(window));
}

int HostWindow::keysHeard()
{
    return static_cast<int>(SetWindowLongPtrW(asWindow(window), GWLP_USERDATA, 0));
}

int HostWindow::childWidth() const
{
    RECT rect{};
    const HWND child = window ? GetWindow(asWindow(window), GW_CHILD) : nullptr;
    return child && GetClientRect(child, &rect) ? static_cast<int>(rect.right) : 0;
}

void HostWindow::paintChildOver() const
{
    const HWND child = GetWindow(asWindow(window), GW_CHILD);
    const HDC device = GetDC(child);
    const HBRUSH brush = CreateSolidBrush(RGB(255, 0, 255));
    const RECT all{0, 0, 4000, 4000};
    FillRect(device, &all, brush);
    DeleteObject(brush);
    ReleaseDC(child, device);
}

Pixels screenshot(Place corner, int width, int height)
{
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    BITMAPINFO format{};
    format.bmiHeader = {sizeof format.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(screen, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, corner.x, corner.y, SRCCOPY);
    GdiFlush();
    Pixels picture(width, height);
    const auto* pixel = static_cast<const uint8_t*>(bits);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x, pixel += 4)
            picture.set(x, y, CColor(pixel[2], pixel[1], pixel[0]));
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return picture;
}

void turnMessageLoop()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 3, QS_ALLINPUT);
}

std::string titleInFront()
{
    char title[200] = {};
    GetWindowTextA(GetForegroundWindow(), title, sizeof title);
    return title;
}

std::string messageInFront()
{
    std::string texts;
    EnumChildWindows(
        GetForegroundWindow(),
        [](HWND child, LPARAM target) -> BOOL {
            char kind[20] = {}, text[200] = {};
            GetClassNameA(child, kind, sizeof kind);
            GetWindowTextA(child, text, sizeof text);
            if (std::string(kind) == "Static")
                *reinterpret_cast<std::string*>(target) += text;
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&texts));
    return texts;
}

void fillFieldInFront(const std::string& text)
{
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    if (GetGUIThreadInfo(GetWindowThreadProcessId(GetForegroundWindow(), nullptr), &info))
        SendMessageA(info.hwndFocus, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void setClipboard(const std::string& text)
{
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, nullptr, 0);
    const HGLOBAL memory =
        GlobalAlloc(GMEM_MOVEABLE, static_cast<std::size_t>(size) * sizeof(wchar_t));
    MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, static_cast<wchar_t*>(GlobalLock(memory)),
                        size);
    GlobalUnlock(memory);
    OpenClipboard(GetDesktopWindow());
    EmptyClipboard();
    SetClipboardData(CF_UNICODETEXT, memory);
    CloseClipboard();
}

std::string clipboard()
{
    OpenClipboard(nullptr);
    char text[1024] = "";
    if (const HANDLE memory = GetClipboardData(CF_UNICODETEXT)) {
        WideCharToMultiByte(CP_UTF8, 0, static_cast<const wchar_t*>(GlobalLock(memory)), -1, text,
                            sizeof text, nullptr, nullptr);
        GlobalUnlock(memory);
    }
    CloseClipboard();
    return text;
}

namespace userinput {

void movePointer(Place where)
{
    // SendInput's coordinates: the screen is 65536 wide and high. Aims at the pixel's centre.
    const int width = GetSystemMetrics(SM_CXSCREEN), height = GetSystemMetrics(SM_CYSCREEN);
    sendMouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, (where.x * 65536 + 32768) / width,
              (where.y * 65536 + 32768) / height, 0);
    // Wine also moves the X server's pointer and is notified of that a little later.
    Sleep(8);
}

void button(Button which, bool down)
{
    if (which == Button::Left)
        sendMouse(down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP, 0, 0, 0);
    else
        sendMouse(down ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_RIGHTUP, 0, 0, 0);
}

void wheel(bool up)
{
    sendMouse(MOUSEEVENTF_WHEEL, 0, 0, static_cast<DWORD>(up ? WHEEL_DELTA : -WHEEL_DELTA));
}

void key(Key which, bool down)
{
    constexpr WORD kKeys[] = {VK_CONTROL, VK_RETURN, VK_ESCAPE, VK_TAB, VK_DOWN, 'C', 'V'};
    sendKey(kKeys[static_cast<int>(which)], 0, down ? 0 : KEYEVENTF_KEYUP);
}

void type(const std::string& text)
{
    for (const char character : text)
        for (const DWORD up : {DWORD(0), DWORD(KEYEVENTF_KEYUP)})
            sendKey(0, static_cast<WORD>(character), KEYEVENTF_UNICODE | up);
}

}  // namespace userinput
