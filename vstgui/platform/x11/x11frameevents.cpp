// X11Frame: the window's events. Each call of the frame's callback may close the window, so
// handlers make it last or check afterwards.
#include "vstgui/platform/x11/x11errors.h"
#include "vstgui/platform/x11/x11filedialog.h"
#include "vstgui/platform/x11/x11frame.h"
#include "vstgui/platform/x11/x11keys.h"
#include "vstgui/platform/x11/x11textedit.h"

namespace VSTGUI {
namespace X11 {

namespace {

constexpr unsigned int kWheelUp = 4;
constexpr unsigned int kWheelRight = 7;

constexpr long kXembedEmbedded = 0;
constexpr long kXembedFocusIn = 4;
constexpr long kXembedFocusOut = 5;

}  // namespace

void X11Frame::handleEvent(XEvent& event)
{
    const CBaseObjectGuard guard(this);
    if (event.xany.window == hostWindow) {
        if (event.type == UnmapNotify || event.type == DestroyNotify)
            releaseMouse();
        return;
    }
    const bool input = event.type == ButtonPress || event.type == ButtonRelease
        || event.type == MotionNotify || event.type == KeyPress || event.type == KeyRelease;
    if (X11Modal* modal = input ? connection->getModal() : nullptr) {
        if (event.type == ButtonPress)
            modal->pressedOutside();
        return;
    }
    if (input && dialog)
        return;
    switch (event.type) {
    case Expose: {
        const XExposeEvent& e = event.xexpose;
        invalidRect(CRect(e.x, e.y, e.x + e.width, e.y + e.height));
        break;
    }
    case ButtonPress:
        onButtonPress(event.xbutton);
        break;
    case ButtonRelease:
        onButtonRelease(event.xbutton);
        break;
    case MotionNotify:
        onMotion(event.xmotion);
        break;
    case LeaveNotify:
        onLeave(event.xcrossing);
        break;
    case KeyPress:
    case KeyRelease:
        onKey(event.xkey);
        break;
    case FocusIn:
    case FocusOut:
        onFocus(event.xfocus);
        break;
    case SelectionRequest:
    case SelectionNotify:
    case PropertyNotify:
        onClipboard(event);
        break;
    case ClientMessage:
        if (event.xclient.message_type == connection->getXembedAtom())
            onXembed(event.xclient);
        break;
    case UnmapNotify:
        releaseMouse();
        break;
    case DestroyNotify:
        windowGone = true;
        cancelFileDialog();
        releaseMouse();
        break;
    default:
        break;
    }
}

void X11Frame::onButtonPress(XButtonEvent& event)
{
    if (event.button >= kWheelUp && event.button <= kWheelRight) {
        onWheel(event);
        return;
    }
    const int32_t button = buttonOfNumber(event.button);
    if (button == 0)
        return;
    inputTime = event.time;
    CPoint where(event.x, event.y);
    if (textBox && button == kMButton && textBox->getRect().pointInside(where)) {
        textBox->press(where, false, false);
        const X11ErrorGuard guard(connection->getDisplay());
        clipboard->requestSelected(inputTime);
        return;
    }
    // The frame would end the editing and begin it again.
    if (textBox && button == kRButton && textBox->getRect().pointInside(where))
        return;
    pressed |= button;
    if (textBox && button == kLButton && textBox->getRect().pointInside(where)) {
        const bool twice = clicks.press(event.button, event.time, where);
        draggingInTextBox = true;
        textBox->press(where, twice, (event.state & ShiftMask) != 0);
        return;
    }
    int32_t word = buttonsOfState(event.state) | pressed;
    if (clicks.press(event.button, event.time, where))
        word |= kDoubleClick;
    callback->platformOnMouseDown(where, word);
}

void X11Frame::onButtonRelease(XButtonEvent& event)
{
    const int32_t button = buttonOfNumber(event.button);
    if (button == 0)
        return;
    clicks.release();
    const int32_t word = buttonsOfState(event.state) | pressed | button;
    pressed &= ~button;
    if (draggingInTextBox && button == kLButton) {
        draggingInTextBox = false;
        return;
    }
    CPoint where(event.x, event.y);
    callback->platformOnMouseUp(where, word);
}

void X11Frame::onMotion(XMotionEvent& event)
{
    CPoint where(event.x, event.y);
    clicks.move(where);
    // A release went elsewhere, as when a window above the host's was hidden. Only these buttons
    // are in an event's state.
    constexpr int32_t kInState = kLButton | kMButton | kRButton;
    if (pressed & kInState & ~buttonsOfState(event.state))
        releaseMouse();
    if (!callback)
        return;
    if (draggingInTextBox && textBox) {
        textBox->drag(where);
        return;
    }
    callback->platformOnMouseMoved(where, buttonsOfState(event.state) | pressed);
}

void X11Frame::onLeave(XCrossingEvent& event)
{
    // A drag goes on when the pointer leaves. The grab itself also causes a crossing event.
    if (event.mode == NotifyGrab || pressed != 0)
        return;
    CPoint where(event.x, event.y);
    callback->platformOnMouseExited(where, buttonsOfState(event.state));
}

void X11Frame::onWheel(XButtonEvent& event)
{
    // 4 up, 5 down, 6 left, 7 right.
    const bool vertical = event.button <= kWheelUp + 1;
    const float distance = event.button % 2 == 0 ? 1.f : -1.f;
    const CButtonState modifiers(CButtonState(buttonsOfState(event.state)).getModifierState());
    callback->platformOnMouseWheel(CPoint(event.x, event.y),
                                   vertical ? kMouseWheelAxisY : kMouseWheelAxisX, distance,
                                   modifiers);
}

void X11Frame::onKey(XKeyEvent& event)
{
    inputTime = event.time;
    KeyInput key = readKey(event, event.type == KeyPress ? getInputContext() : nullptr);
    if (textBox) {
        if (event.type == KeyPress)
            textBox->key(key);
    } else if (event.type == KeyPress) {
        callback->platformOnKeyDown(key.code);
    } else {
        callback->platformOnKeyUp(key.code);
    }
}

void X11Frame::onClipboard(XEvent& event)
{
    std::optional<std::string> text;
    {
        const X11ErrorGuard guard(connection->getDisplay());
        text = clipboard->handle(event);
    }
    if (text && textBox)
        textBox->paste(*text);
}

void X11Frame::onFocus(XFocusChangeEvent& event)
{
    const bool ordinary = event.mode == NotifyNormal || event.mode == NotifyWhileGrabbed;
    if (!ordinary || event.detail == NotifyInferior || event.detail >= NotifyPointer)
        return;
    const bool in = event.type == FocusIn;
    // The focus may have returned since, for the next text box.
    if (!in && hasKeyboard())
        return;
    if (inputContext && in)
        XSetICFocus(inputContext);
    else if (inputContext)
        XUnsetICFocus(inputContext);
    activate(in);
}

void X11Frame::activate(bool state)
{
    // As on Windows: a box that is still open would open again with the next activation.
    if (!state && textBox)
        textBox->end();
    if (callback)
        callback->platformOnActivate(state);
}

void X11Frame::onXembed(XClientMessageEvent& event)
{
    switch (event.data.l[1]) {
    case kXembedEmbedded: {
        const X11ErrorGuard guard(connection->getDisplay());
        XMapWindow(connection->getDisplay(), window);
        break;
    }
    case kXembedFocusIn:
    case kXembedFocusOut:
        activate(event.data.l[1] == kXembedFocusIn);
        break;
    default:
        break;
    }
}

void X11Frame::releaseMouse()
{
    draggingInTextBox = false;
    if (X11Modal* modal = connection->getModal())
        modal->pressedOutside();
    if (std::exchange(pressed, 0) != 0 && callback)
        callback->platformOnMouseCancel();
}

XIC X11Frame::getInputContext()
{
    if (inputContext)
        return inputContext;
    XIM method = connection->getInputMethod();
    if (!method)
        return nullptr;
    const X11ErrorGuard guard(connection->getDisplay());
    inputContext = XCreateIC(method, XNInputStyle, XIMPreeditNothing | XIMStatusNothing,
                             XNClientWindow, window, XNFocusWindow, window, nullptr);
    if (inputContext)
        XSetICFocus(inputContext);
    return inputContext;
}

}  // namespace X11
}  // namespace VSTGUI
