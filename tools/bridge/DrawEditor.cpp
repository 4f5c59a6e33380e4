// The picture is read from the screen, where the window lies above all others.
#include "tools/bridge/DrawEditor.h"

#include "tools/host/HostError.h"

#include <cstring>
#include <windows.h>

namespace {

using host::Picture;

class EditorWindow {
public:
    explicit EditorWindow(host::NativePlugin& plugin) : plugin(plugin)
    {
        AEffect* const effect = plugin.effect();
        ERect* rect = nullptr;
        if (!effect->dispatcher(effect, effEditGetRect, 0, 0, &rect, 0.0f) || !rect)
            throw host::HostError("the plug-in has no editor");
        window = CreateWindowExW(WS_EX_TOPMOST | WS_EX_NOACTIVATE, L"STATIC", L"",
                                 WS_POPUP | WS_CLIPCHILDREN, 0, 0, rect->right - rect->left,
                                 rect->bottom - rect->top, nullptr, nullptr, nullptr, nullptr);
        if (!window)
            throw host::HostError("there is no window for the editor");
        ShowWindow(window, SW_SHOWNOACTIVATE);
        effect->dispatcher(effect, effEditOpen, 0, 0, window, 0.0f);
    }
    ~EditorWindow()
    {
        plugin.dispatch(effEditClose);
        DestroyWindow(window);
    }
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;

    void idle()
    {
        plugin.idle();
        const host::HostReports reports = plugin.reports();
        if (reports.windowSizes != sizesSeen)
            SetWindowPos(window, HWND_TOPMOST, 0, 0, reports.windowWidth, reports.windowHeight,
                         SWP_NOACTIVATE);
        sizesSeen = reports.windowSizes;
    }
    Picture picture() const
    {
        RECT size{};
        GetClientRect(window, &size);
        const HDC screen = GetDC(nullptr), memory = CreateCompatibleDC(screen);
        BITMAPINFO format{};
        format.bmiHeader = {
            sizeof format.bmiHeader, size.right, -size.bottom, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        const HBITMAP bitmap = CreateDIBSection(screen, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
        Picture drawn{
            static_cast<std::int32_t>(size.right), static_cast<std::int32_t>(size.bottom), {}};
        if (bitmap) {
            const HGDIOBJ before = SelectObject(memory, bitmap);
            BitBlt(memory, 0, 0, size.right, size.bottom, screen, 0, 0, SRCCOPY);
            GdiFlush();
            drawn.pixels.resize(4 * static_cast<std::size_t>(size.right)
                                * static_cast<std::size_t>(size.bottom));
            std::memcpy(drawn.pixels.data(), bits, drawn.pixels.size());
            SelectObject(memory, before);
            DeleteObject(bitmap);
        }
        DeleteDC(memory);
        ReleaseDC(nullptr, screen);
        return drawn;
    }

private:
    host::NativePlugin& plugin;
    HWND window = nullptr;
    int sizesSeen = 0;
};

}  // namespace

Picture drawEditor(host::NativePlugin& plugin)
{
    constexpr DWORD kIdleMs = 16;
    constexpr int kIdlesBetween = 15, kPicturesAtMost = 20;
    EditorWindow window(plugin);
    Picture last{};
    // Until two pictures in turn are equal; some editors never rest.
    for (int i = 0; i < kPicturesAtMost; ++i) {
        for (int idles = 0; idles < kIdlesBetween; ++idles) {
            window.idle();
            Sleep(kIdleMs);
        }
        Picture next = window.picture();
        const bool rests = i > 0 && next.pixels == last.pixels;
        last = std::move(next);
        if (rests)
            break;
    }
    return last;
}
