// X11OptionMenu: the window, its grabs, and the loop that waits for a choice.
#include "vstgui/platform/x11/x11optionmenu.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/controls/coptionmenu.h"
#include "vstgui/platform/x11/x11errors.h"
#include "vstgui/platform/x11/x11keys.h"

#include <X11/keysym.h>
#include <algorithm>
#include <unistd.h>

namespace VSTGUI {
namespace X11 {

namespace {

constexpr int kWaitPeriod = 50;  // ms
constexpr int kGrabAttempts = 20;
constexpr useconds_t kGrabPause = 10000;  // microseconds
constexpr CCoord kClickDistance = 4.;     // pixels; a move beyond it is a drag into the menu

// Moves the corner so that the menu lies inside the screen.
CPoint insideScreen(const CPoint& corner, const CPoint& size, const CPoint& screen)
{
    return {std::max(std::min(corner.x, screen.x - size.x), 0.),
            std::max(std::min(corner.y, screen.y - size.y), 0.)};
}

}  // namespace

PlatformOptionMenuResult X11OptionMenu::popup(COptionMenu* menu)
{
    if (!frame->isAlive())
        return {};
    const CBaseObjectGuard guard(this);
    // Keeps the connection open if the last frame closes meanwhile.
    connection = frame->getConnection().shared_from_this();
    Display* display = connection->getDisplay();
    const int screen = DefaultScreen(display);
    const CPoint screenSize(DisplayWidth(display, screen), DisplayHeight(display, screen));
    panel = std::make_unique<MenuPanel>(*menu, screenSize);

    const bool covering = (menu->getStyle() & VSTGUI::kPopupStyle) != 0;
    const CRect& view = menu->getViewSize();
    CPoint corner(covering ? view.getTopLeft() : view.getBottomLeft());
    menu->localToFrame(corner);
    CPoint framePosition;
    if (!frame->getGlobalPosition(framePosition))
        return {};
    const CPoint position = insideScreen(corner + framePosition, panel->getSize(), screenSize);
    CPoint pointer;
    frame->getCurrentMousePosition(pointer);
    openedAt = pointer + framePosition - position;
    highlighted = panel->getCurrent();

    if (!openWindow(position))
        return {};
    frame->setMenu(this);
    X11Modal* outer = connection->setModal(this);
    done = !grabInput();
    paint();
    while (!done)
        connection->waitAndHandle(kWaitPeriod);
    connection->setModal(outer);
    frame->setMenu(nullptr);
    frame->forgetPressedButtons();
    closeWindow();
    connection.reset();
    if (chosen < 0 || !frame->isAlive())
        return {};
    return {menu, chosen};
}

bool X11OptionMenu::openWindow(const CPoint& position)
{
    Display* display = connection->getDisplay();
    const X11ErrorGuard guard(display);
    const CPoint size = panel->getSize();
    backBuffer = owned(static_cast<CairoSurface*>(IPlatformSurface::create(size.x, size.y)));
    if (!backBuffer)
        return false;
    XSetWindowAttributes wanted{};
    wanted.override_redirect = True;
    wanted.background_pixmap = None;
    wanted.event_mask =
        ExposureMask | ButtonPressMask | ButtonReleaseMask | PointerMotionMask | KeyPressMask;
    const int screen = DefaultScreen(display);
    window = XCreateWindow(display, DefaultRootWindow(display), static_cast<int>(position.x),
                           static_cast<int>(position.y), static_cast<unsigned int>(size.x),
                           static_cast<unsigned int>(size.y), 0, CopyFromParent, InputOutput,
                           static_cast<Visual*>(CopyFromParent),
                           CWOverrideRedirect | CWBackPixmap | CWEventMask, &wanted);
    painter = std::make_unique<WindowPainter>(display, window, DefaultVisual(display, screen),
                                              DefaultDepth(display, screen));
    connection->addWindow(window, this);
    XMapRaised(display, window);
    return true;
}

void X11OptionMenu::closeWindow()
{
    Display* display = connection->getDisplay();
    const X11ErrorGuard guard(display);
    connection->removeWindow(window);
    XUngrabKeyboard(display, CurrentTime);
    XUngrabPointer(display, CurrentTime);
    painter.reset();
    XDestroyWindow(display, window);
    XFlush(display);
}

bool X11OptionMenu::grabInput()
{
    Display* display = connection->getDisplay();
    const X11ErrorGuard guard(display);
    XSync(display, False);
    const unsigned int events = ButtonPressMask | ButtonReleaseMask | PointerMotionMask;
    bool pointer = false;
    bool keyboard = false;
    for (int attempt = 0; attempt < kGrabAttempts && !(pointer && keyboard); ++attempt) {
        if (attempt > 0)
            usleep(kGrabPause);
        pointer = pointer
            || XGrabPointer(display, window, False, events, GrabModeAsync, GrabModeAsync, None,
                            None, CurrentTime)
                == GrabSuccess;
        keyboard = keyboard
            || XGrabKeyboard(display, window, False, GrabModeAsync, GrabModeAsync, CurrentTime)
                == GrabSuccess;
    }
    // The menu works without the keyboard, but without the pointer a press outside cannot close it.
    return pointer;
}

void X11OptionMenu::handleEvent(XEvent& event)
{
    switch (event.type) {
    case Expose:
        if (event.xexpose.count == 0)
            paint();
        break;
    case MotionNotify:
        onPointer(CPoint(event.xmotion.x, event.xmotion.y));
        break;
    case ButtonPress:
        // A press chooses nothing; only outside it closes the menu.
        if (!CRect(CPoint(), panel->getSize())
                 .pointInside(CPoint(event.xbutton.x, event.xbutton.y)))
            cancel();
        else
            pointerMoved = true;
        break;
    case ButtonRelease:
        if (buttonOfNumber(event.xbutton.button) != 0)
            onRelease(CPoint(event.xbutton.x, event.xbutton.y));
        break;
    case KeyPress:
        onKey(event.xkey);
        break;
    default:
        break;
    }
}

void X11OptionMenu::onPointer(const CPoint& where)
{
    const CPoint distance = where - openedAt;
    if (!pointerMoved && std::max(std::fabs(distance.x), std::fabs(distance.y)) <= kClickDistance)
        return;
    pointerMoved = true;
    highlight(panel->entryAt(where));
}

void X11OptionMenu::onRelease(const CPoint& where)
{
    // The release of the click that opened the menu chooses nothing.
    if (!pointerMoved) {
        pointerMoved = true;
        return;
    }
    const int32_t entry = panel->entryAt(where);
    if (entry >= 0)
        finish(entry);
}

void X11OptionMenu::onKey(XKeyEvent& event)
{
    switch (readKey(event, nullptr).code.virt) {
    case VKEY_ESCAPE:
        cancel();
        break;
    case VKEY_RETURN:
    case VKEY_ENTER:
        finish(highlighted);
        break;
    case VKEY_UP:
        highlight(panel->neighbour(highlighted, -1));
        break;
    case VKEY_DOWN:
        highlight(panel->neighbour(highlighted, 1));
        break;
    case VKEY_LEFT:
        highlight(panel->beside(highlighted, -1));
        break;
    case VKEY_RIGHT:
        highlight(panel->beside(highlighted, 1));
        break;
    default:
        break;
    }
}

void X11OptionMenu::highlight(int32_t entry)
{
    if (highlighted == entry)
        return;
    highlighted = entry;
    paint();
}

void X11OptionMenu::finish(int32_t entry)
{
    if (done)
        return;
    done = true;
    chosen = entry;
}

void X11OptionMenu::paint()
{
    const auto context = owned(new CDrawContext(backBuffer));
    panel->draw(*context, highlighted);
    const X11ErrorGuard guard(connection->getDisplay());
    painter->copy(backBuffer->getImage(), {CRect(CPoint(), panel->getSize())});
    XFlush(connection->getDisplay());
}

}  // namespace X11
}  // namespace VSTGUI
