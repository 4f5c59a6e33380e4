// A window of Windows. Input is put into the queue, for the window that the editor has put into it.
#include "EditorWindow.h"

#include "HostError.h"

#include <windows.h>

namespace {

constexpr wchar_t kClass[] = L"ZkrT46Soak";

class Win32EditorWindow : public EditorWindow {
public:
    Win32EditorWindow(host::NativePlugin& plugin, const std::string& title)
    {
        WNDCLASSW description{};
        description.lpfnWndProc = DefWindowProcW;
        description.hInstance = GetModuleHandleW(nullptr);
        description.lpszClassName = kClass;
        RegisterClassW(&description);
        const EditorSize size = editorSize(plugin);
        const std::wstring wide(title.begin(), title.end());
        window = CreateWindowExW(WS_EX_NOACTIVATE, kClass, wide.c_str(), WS_POPUP | WS_CLIPCHILDREN,
                                 0, 0, size.width, size.height, nullptr, nullptr,
                                 description.hInstance, nullptr);
        if (!window)
            throw host::HostError("there is no desktop to open editors on");
        ShowWindow(window, SW_SHOWNOACTIVATE);
        if (plugin.effect()->dispatcher(plugin.effect(), effEditOpen, 0, 0, window, 0.0f) == 0) {
            DestroyWindow(window);
            throw host::HostError("the editor does not open");
        }
    }
    ~Win32EditorWindow() override { DestroyWindow(window); }

    void resize(int width, int height) override
    {
        SetWindowPos(window, nullptr, 0, 0, width, height,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    // The host's idle calls empty the queue of the thread.
    void turn() override { }
    void moveMouse(int x, int y) override { post(WM_MOUSEMOVE, held, x, y); }
    void pressButton(int x, int y, bool down) override
    {
        held = down ? MK_LBUTTON : 0;
        post(down ? WM_LBUTTONDOWN : WM_LBUTTONUP, held, x, y);
    }
    void turnWheel(int x, int y, bool up) override
    {
        POINT where{x, y};
        ClientToScreen(window, &where);
        const int distance = up ? WHEEL_DELTA : -WHEEL_DELTA;
        post(WM_MOUSEWHEEL, MAKEWPARAM(held, static_cast<WORD>(distance)), where.x, where.y);
    }

private:
    void post(UINT message, WPARAM what, int x, int y)
    {
        if (const HWND child = GetWindow(window, GW_CHILD))
            PostMessageW(child, message, what,
                         MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y)));
    }

    HWND window = nullptr;
    WPARAM held = 0;
};

}  // namespace

std::unique_ptr<EditorWindow> openEditorWindow(host::NativePlugin& plugin, const std::string& title)
{
    return std::make_unique<Win32EditorWindow>(plugin, title);
}
