#include "vstgui/platform/x11/x11message.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/platform/iplatformfont.h"
#include "vstgui/platform/x11/x11errors.h"
#include "vstgui/platform/x11/x11keys.h"
#include "vstgui/platform/x11/x11toplevel.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <algorithm>
#include <cmath>
#include <sstream>

namespace VSTGUI {
namespace X11 {

namespace {

constexpr CCoord kMargin = 20.;
constexpr CCoord kLineHeight = 20.;
constexpr CCoord kMinTextWidth = 220.;
constexpr CCoord kButtonWidth = 84.;
constexpr CCoord kButtonHeight = 26.;
constexpr CCoord kButtonGap = 12.;

constexpr CColor kBack(250, 250, 250, 255);
constexpr CColor kEdge(150, 150, 150, 255);
constexpr CColor kText(20, 20, 20, 255);
constexpr CColor kPressed(215, 215, 215, 255);

}  // namespace

X11Message::X11Message(X11Connection& connection, Window above, const std::string& text,
                       const std::string& caption, const std::vector<std::string>& labels)
    : connection(connection), focused(labels.size() - 1), answered(focused)
{
    layOut(text, labels);
    openWindow(above, caption);
}

X11Message::~X11Message()
{
    close(0);
}

void X11Message::layOut(const std::string& text, const std::vector<std::string>& labels)
{
    const IPlatformFont* font = kNormalFont->getPlatformFont();
    CCoord width = kMinTextWidth;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        width = std::max(width, font ? std::ceil(font->getStringWidth(line.c_str())) : 0.);
        lines.push_back(line);
    }
    const CCoord below = kMargin + kLineHeight * static_cast<CCoord>(lines.size()) + kMargin;
    size(width + 2. * kMargin, below + kButtonHeight + kMargin);
    const CCoord row =
        static_cast<CCoord>(labels.size()) * (kButtonWidth + kButtonGap) - kButtonGap;
    CRect place(CPoint(std::floor((size.x - row) / 2.), below),
                CPoint(kButtonWidth, kButtonHeight));
    for (const std::string& label : labels) {
        buttons.push_back({label, place});
        place.offset(kButtonWidth + kButtonGap, 0.);
    }
}

void X11Message::openWindow(Window above, const std::string& caption)
{
    Display* display = connection.getDisplay();
    const X11ErrorGuard guard(display);
    backBuffer = owned(static_cast<CairoSurface*>(IPlatformSurface::create(size.x, size.y)));
    XWindowAttributes covered;
    if (!backBuffer || !XGetWindowAttributes(display, above, &covered))
        return;
    const int screen = DefaultScreen(display);
    const Window root = DefaultRootWindow(display);
    int x = 0;
    int y = 0;
    Window child = 0;
    XTranslateCoordinates(display, above, root, 0, 0, &x, &y, &child);
    const auto width = static_cast<int>(size.x);
    const auto height = static_cast<int>(size.y);
    x = std::clamp(x + (covered.width - width) / 2, 0,
                   std::max(DisplayWidth(display, screen) - width, 0));
    y = std::clamp(y + (covered.height - height) / 2, 0,
                   std::max(DisplayHeight(display, screen) - height, 0));

    XSetWindowAttributes wanted{};
    wanted.background_pixmap = None;
    wanted.event_mask =
        ExposureMask | ButtonPressMask | ButtonReleaseMask | KeyPressMask | StructureNotifyMask;
    window =
        XCreateWindow(display, root, x, y, static_cast<unsigned int>(width),
                      static_cast<unsigned int>(height), 0, CopyFromParent, InputOutput,
                      static_cast<Visual*>(CopyFromParent), CWBackPixmap | CWEventMask, &wanted);
    setWindowProperties(above, caption);
    painter = std::make_unique<WindowPainter>(display, window, DefaultVisual(display, screen),
                                              DefaultDepth(display, screen));
    connection.addWindow(window, this);
    XMapRaised(display, window);
    XFlush(display);
}

// Properties for the window manager.
void X11Message::setWindowProperties(Window above, const std::string& caption)
{
    Display* display = connection.getDisplay();
    const auto setAtom = [&](const char* name, Atom type, Atom value) {
        XChangeProperty(display, window, XInternAtom(display, name, False), type, 32,
                        PropModeReplace, reinterpret_cast<unsigned char*>(&value), 1);
    };
    XSetTransientForHint(display, window, topLevelOf(display, above));
    XStoreName(display, window, caption.c_str());
    XChangeProperty(display, window, XInternAtom(display, "_NET_WM_NAME", False),
                    XInternAtom(display, "UTF8_STRING", False), 8, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(caption.data()),
                    static_cast<int>(caption.size()));
    setAtom("_NET_WM_WINDOW_TYPE", XA_ATOM,
            XInternAtom(display, "_NET_WM_WINDOW_TYPE_DIALOG", False));
    deleteWindow = XInternAtom(display, "WM_DELETE_WINDOW", False);
    XSetWMProtocols(display, window, &deleteWindow, 1);
    XSizeHints hints{};
    hints.flags = PMinSize | PMaxSize;
    hints.min_width = hints.max_width = static_cast<int>(size.x);
    hints.min_height = hints.max_height = static_cast<int>(size.y);
    XSetWMNormalHints(display, window, &hints);
}

std::optional<size_t> X11Message::buttonAt(const CPoint& where) const
{
    for (size_t i = 0; i < buttons.size(); ++i) {
        if (buttons[i].place.pointInside(where))
            return i;
    }
    return {};
}

void X11Message::close(size_t answer)
{
    if (!window)
        return;
    answered = answer;
    const X11ErrorGuard guard(connection.getDisplay());
    connection.removeWindow(window);
    painter.reset();
    XDestroyWindow(connection.getDisplay(), window);
    XFlush(connection.getDisplay());
    window = 0;
}

void X11Message::handleEvent(XEvent& event)
{
    switch (event.type) {
    case Expose:
        if (event.xexpose.count == 0)
            paint();
        break;
    case ButtonPress:
        pressed = buttonOfNumber(event.xbutton.button) == kLButton
            ? buttonAt(CPoint(event.xbutton.x, event.xbutton.y))
            : std::nullopt;
        paint();
        break;
    case ButtonRelease:
        if (pressed && pressed == buttonAt(CPoint(event.xbutton.x, event.xbutton.y)))
            return close(*pressed);
        pressed.reset();
        paint();
        break;
    case KeyPress:
        onKey(readKey(event.xkey, nullptr).code.virt);
        break;
    case ClientMessage:
        if (static_cast<Atom>(event.xclient.data.l[0]) == deleteWindow)
            close(buttons.size() - 1);
        break;
    case DestroyNotify:
        close(buttons.size() - 1);
        break;
    default:
        break;
    }
}

void X11Message::onKey(int key)
{
    if (key == VKEY_ESCAPE)
        close(buttons.size() - 1);
    else if (key == VKEY_RETURN || key == VKEY_ENTER || key == VKEY_SPACE)
        close(focused);
    else if (key == VKEY_TAB || key == VKEY_RIGHT)
        focused = (focused + 1) % buttons.size();
    else if (key == VKEY_LEFT)
        focused = (focused + buttons.size() - 1) % buttons.size();
    if (window)
        paint();
}

void X11Message::paint()
{
    const auto context = owned(new CDrawContext(backBuffer));
    context->setFillColor(kBack);
    context->setFrameColor(kEdge);
    context->drawRect(CRect(CPoint(), size), kDrawFilledAndStroked);
    context->setFont(kNormalFont);
    context->setFontColor(kText);
    CRect row(kMargin, kMargin, size.x - kMargin, kMargin + kLineHeight);
    for (const std::string& line : lines) {
        context->drawString(line.c_str(), row, kLeftText);
        row.offset(0., kLineHeight);
    }
    for (size_t i = 0; i < buttons.size(); ++i) {
        context->setFillColor(pressed == i ? kPressed : kWhiteCColor);
        context->setFrameColor(buttons.size() > 1 && focused == i ? kText : kEdge);
        context->drawRect(buttons[i].place, kDrawFilledAndStroked);
        context->drawString(buttons[i].label.c_str(), buttons[i].place, kCenterText);
    }
    const X11ErrorGuard guard(connection.getDisplay());
    painter->copy(backBuffer->getImage(), {CRect(CPoint(), size)});
    XFlush(connection.getDisplay());
}

}  // namespace X11
}  // namespace VSTGUI
