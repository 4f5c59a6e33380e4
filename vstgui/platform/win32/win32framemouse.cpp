// Win32Frame: mouse buttons with capture, moves, leaving and the wheels.
#include "vstgui/platform/win32/win32frame.h"

#include "vstgui/platform/win32/win32keys.h"

#include <windowsx.h>

namespace VSTGUI {

namespace {

// Signed: moves during a capture and on screens left of or above the main one can be negative.
POINT pointFrom(LPARAM lParam)
{
    return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

CPoint toPoint(const POINT& point)
{
    return {static_cast<CCoord>(point.x), static_cast<CCoord>(point.y)};
}

bool isDoubleClick(UINT message)
{
    return message == WM_LBUTTONDBLCLK || message == WM_MBUTTONDBLCLK || message == WM_RBUTTONDBLCLK
        || message == WM_XBUTTONDBLCLK;
}

bool isRelease(UINT message)
{
    return message == WM_LBUTTONUP || message == WM_MBUTTONUP || message == WM_RBUTTONUP
        || message == WM_XBUTTONUP;
}

}  // namespace

bool Win32Frame::handleMouse(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    if (const int32_t button = buttonOf(message, wParam)) {
        const CPoint where = toPoint(pointFrom(lParam));
        const int32_t buttons = buttonsFrom(LOWORD(wParam)) | button;
        if (isRelease(message))
            release(where, buttons);
        else
            press(button, where, isDoubleClick(message) ? buttons | kDoubleClick : buttons);
        result = button == kButton4 || button == kButton5 ? TRUE : 0;
        return true;
    }
    switch (message) {
    case WM_MOUSEMOVE:
        move(toPoint(pointFrom(lParam)), buttonsFrom(LOWORD(wParam)));
        return true;
    case WM_MOUSELEAVE: {
        watchingForLeave = false;
        CPoint where;
        if (callback && !capturing && getCurrentMousePosition(where))
            callback->platformOnMouseExited(where, CButtonState(currentButtons()));
        return true;
    }
    case WM_CAPTURECHANGED:
        if (reinterpret_cast<HWND>(lParam) != window)
            loseCapture();
        return true;
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
        return wheel(message, wParam, lParam);
    default:
        return false;
    }
}

void Win32Frame::press(int32_t button, CPoint where, CButtonState buttons)
{
    const bool heldBefore = isHeld(button);
    if (!callback)
        return;
    const CMouseEventResult answer = callback->platformOnMouseDown(where, buttons);
    if (answer != kMouseEventHandled || !callback || !window)
        return;
    capturing = true;
    if (heldBefore && !isHeld(button)) {
        // A nested message loop has received the release.
        loseCapture();
        return;
    }
    SetCapture(window);
}

void Win32Frame::release(CPoint where, CButtonState buttons)
{
    const bool captured = std::exchange(capturing, false);
    if (callback)
        callback->platformOnMouseUp(where, buttons);
    // A press in a nested message loop may have captured again.
    if (!captured || capturing || !window)
        return;
    if (GetCapture() == window)
        ReleaseCapture();
    // WM_MOUSELEAVE does not come during a capture. If the pointer is outside, it comes at once.
    watchingForLeave = false;
    watchForLeave();
}

void Win32Frame::move(CPoint where, CButtonState buttons)
{
    watchForLeave();
    if (callback)
        callback->platformOnMouseMoved(where, buttons);
}

bool Win32Frame::wheel(UINT message, WPARAM wParam, LPARAM lParam)
{
    POINT point = pointFrom(lParam);
    if (!callback || !ScreenToClient(window, &point))
        return false;
    const float notches =
        static_cast<float>(GET_WHEEL_DELTA_WPARAM(wParam)) / static_cast<float>(WHEEL_DELTA);
    const bool vertical = message == WM_MOUSEWHEEL;
    return callback->platformOnMouseWheel(
        toPoint(point), vertical ? kMouseWheelAxisY : kMouseWheelAxisX,
        vertical ? notches : -notches, CButtonState(modifiersFrom(GET_KEYSTATE_WPARAM(wParam))));
}

void Win32Frame::loseCapture()
{
    const bool captured = std::exchange(capturing, false);
    if (window && GetCapture() == window)
        ReleaseCapture();  // hiding a window does not
    if (captured && callback)
        callback->platformOnMouseCancel();
}

void Win32Frame::watchForLeave()
{
    if (watchingForLeave || !window)
        return;
    TRACKMOUSEEVENT request{sizeof request, TME_LEAVE, window, 0};
    watchingForLeave = TrackMouseEvent(&request) != 0;
}

}  // namespace VSTGUI
