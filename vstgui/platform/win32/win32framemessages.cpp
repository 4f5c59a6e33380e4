// Win32Frame: messages for painting, focus and keys, and those from its text box and menus.
#include "vstgui/platform/win32/win32frame.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/platform/win32/win32keys.h"
#include "vstgui/platform/win32/win32optionmenu.h"

#include <olectl.h>
#include <vector>

namespace VSTGUI {

namespace {

// The rectangles to be painted. To be called before BeginPaint, which clears them.
std::vector<RECT> updateRects(HWND window)
{
    std::vector<RECT> rects;
    const HRGN region = CreateRectRgn(0, 0, 0, 0);
    if (GetUpdateRgn(window, region, FALSE) > NULLREGION) {
        std::vector<char> bytes(GetRegionData(region, 0, nullptr));
        auto* const data = reinterpret_cast<RGNDATA*>(bytes.data());
        if (GetRegionData(region, static_cast<DWORD>(bytes.size()), data)) {
            const auto* const first = reinterpret_cast<const RECT*>(data->Buffer);
            rects.assign(first, first + data->rdh.nCount);
        }
    }
    DeleteObject(region);
    return rects;
}

}  // namespace

LRESULT CALLBACK Win32Frame::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        auto* const created = static_cast<Win32Frame*>(
            reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        created->window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* const frame = reinterpret_cast<Win32Frame*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!frame)
        return DefWindowProcW(window, message, wParam, lParam);

    // A handler may close the frame.
    const CBaseObjectGuard guard(frame);
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        frame->window = nullptr;
        return DefWindowProcW(window, message, wParam, lParam);
    }
    return frame->handle(message, wParam, lParam);
}

LRESULT Win32Frame::passOn(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return window ? DefWindowProcW(window, message, wParam, lParam) : 0;
}

LRESULT Win32Frame::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    if (handleMouse(message, wParam, lParam, result))
        return result;

    switch (message) {
    case WM_PAINT:
        paint();
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_KEYDOWN:
    case WM_KEYUP: {
        VstKeyCode key = keyCodeFrom(wParam);
        const bool used = key.virt != 0 && callback
            && (message == WM_KEYDOWN ? callback->platformOnKeyDown(key)
                                      : callback->platformOnKeyUp(key));
        return used ? 0 : passOn(message, wParam, lParam);
    }
    case WM_SETFOCUS:
        onFocus(true);
        return 0;
    case WM_KILLFOCUS:
        if (!isOurs(reinterpret_cast<HWND>(wParam)))
            onFocus(false);
        return 0;
    case WM_COMMAND:
    case WM_CTLCOLOREDIT:
        // Reflected to the text box.
        if (const HWND child = reinterpret_cast<HWND>(lParam); child && isOurs(child)) {
            result = SendMessageW(child, OCM__BASE + message, wParam, lParam);
            if (result || message == WM_COMMAND)
                return result;
        }
        return passOn(message, wParam, lParam);
    case WM_MEASUREITEM:
    case WM_DRAWITEM:
        return handleMenuEntry(message, lParam) ? TRUE : passOn(message, wParam, lParam);
    case WM_SHOWWINDOW:
        if (!wParam)
            loseCapture();
        return passOn(message, wParam, lParam);
    case WM_DESTROY:
        onDestroy();
        return 0;
    default:
        return passOn(message, wParam, lParam);
    }
}

// False for what is no entry of an open menu.
bool Win32Frame::handleMenuEntry(UINT message, LPARAM lParam) const
{
    const UINT type = message == WM_DRAWITEM
        ? reinterpret_cast<DRAWITEMSTRUCT*>(lParam)->CtlType
        : reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)->CtlType;
    if (menus == 0 || type != ODT_MENU)
        return false;
    if (message == WM_DRAWITEM)
        Win32Menu::draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    else
        Win32Menu::measure(*reinterpret_cast<MEASUREITEMSTRUCT*>(lParam));
    return true;
}

bool Win32Frame::isOurs(HWND other) const
{
    return other && window && (other == window || IsChild(window, other));
}

void Win32Frame::onFocus(bool gained)
{
    if (active == gained)
        return;
    active = gained;
    if (callback)
        callback->platformOnActivate(gained);
}

void Win32Frame::paint()
{
    const std::vector<RECT> rects = updateRects(window);
    RECT client{};
    GetClientRect(window, &client);
    PAINTSTRUCT description;
    const HDC device = BeginPaint(window, &description);
    if (!surface || surface->getSize() != CPoint(client.right, client.bottom))
        surface = owned(Win32Surface::create(std::max<LONG>(client.right, 1),
                                             std::max<LONG>(client.bottom, 1)));
    const SharedPointer<Win32Surface> canvas = surface;
    const HWND painted = window;
    painting = true;
    for (const RECT& rect : rects) {
        if (!canvas || !callback)
            break;
        const auto context = owned(new CDrawContext(canvas));
        if (callback->platformDrawRect(context,
                                       CRect(rect.left, rect.top, rect.right, rect.bottom)))
            canvas->copyTo(device, rect);
    }
    painting = false;
    EndPaint(painted, &description);
}

}  // namespace VSTGUI
