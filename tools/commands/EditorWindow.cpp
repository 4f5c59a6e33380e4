// The window takes the size that the plug-in requests; the user cannot resize it.
#include "tools/commands/EditorWindow.h"

#include "tools/common/ToolError.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <poll.h>

namespace tool {

namespace {

Display* openDisplay()
{
    Display* const display = XOpenDisplay(nullptr);
    if (!display)
        throw ToolError("there is no display to open the editor on");
    return display;
}

}  // namespace

void expectDisplay()
{
    XCloseDisplay(openDisplay());
}

EditorWindow::EditorWindow(host::NativePlugin& plugin, const std::string& title)
    : plugin(plugin), display(openDisplay())
{
    AEffect* const effect = plugin.effect();
    ERect* rect = nullptr;
    if (!effect->dispatcher(effect, effEditGetRect, 0, 0, &rect, 0.0f) || !rect) {
        XCloseDisplay(display);
        throw ToolError("the plug-in has no editor");
    }
    window = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0,
                                 static_cast<unsigned>(rect->right - rect->left),
                                 static_cast<unsigned>(rect->bottom - rect->top), 0, 0, 0);
    XStoreName(display, window, title.c_str());
    deleteMessage = XInternAtom(display, "WM_DELETE_WINDOW", False);
    XSetWMProtocols(display, window, &deleteMessage, 1);
    XSelectInput(display, window, StructureNotifyMask);
    resize(rect->right - rect->left, rect->bottom - rect->top);
    XMapWindow(display, window);
    // The plug-in has its own connection to the server, which must know the window by now.
    XSync(display, False);
    effect->dispatcher(effect, effEditOpen, 0, 0, reinterpret_cast<void*>(window), 0.0f);
    applyRequestedSize();
}

EditorWindow::~EditorWindow()
{
    plugin.dispatch(effEditClose);
    if (window)
        XDestroyWindow(display, window);
    XCloseDisplay(display);
}

void EditorWindow::resize(int width, int height)
{
    XSizeHints hints{};
    hints.flags = PMinSize | PMaxSize;
    hints.min_width = hints.max_width = width;
    hints.min_height = hints.max_height = height;
    XSetWMNormalHints(display, window, &hints);
    XResizeWindow(display, window, static_cast<unsigned>(width), static_cast<unsigned>(height));
    XFlush(display);
}

// Resizes the window if the plug-in has requested that since the last call.
void EditorWindow::applyRequestedSize()
{
    const host::HostReports reports = plugin.reports();
    if (reports.windowSizes == sizesSeen)
        return;
    sizesSeen = reports.windowSizes;
    resize(reports.windowWidth, reports.windowHeight);
}

void EditorWindow::run()
{
    for (;;) {
        while (XPending(display)) {
            XEvent event;
            XNextEvent(display, &event);
            if (event.type == ClientMessage
                && static_cast<Atom>(event.xclient.data.l[0]) == deleteMessage)
                return;
            // The window was destroyed from outside.
            if (event.type == DestroyNotify && event.xdestroywindow.window == window) {
                window = 0;
                return;
            }
        }
        idle();
    }
}

void EditorWindow::idle()
{
    constexpr int kIdleMs = 16;
    plugin.idle();
    applyRequestedSize();
    pollfd connection{ConnectionNumber(display), POLLIN, 0};
    poll(&connection, 1, kIdleMs);
}

// Empty while the window is not on the screen as a whole.
VSTGUI::Pixels EditorWindow::drawn()
{
    XRaiseWindow(display, window);
    XSync(display, False);
    XWindowAttributes attributes;
    int x = 0, y = 0;
    Window child = 0;
    if (!XGetWindowAttributes(display, window, &attributes) || attributes.map_state != IsViewable
        || !XTranslateCoordinates(display, window, attributes.root, 0, 0, &x, &y, &child) || x < 0
        || y < 0 || x + attributes.width > WidthOfScreen(attributes.screen)
        || y + attributes.height > HeightOfScreen(attributes.screen))
        return {};
    XImage* const image = XGetImage(display, window, 0, 0, static_cast<unsigned>(attributes.width),
                                    static_cast<unsigned>(attributes.height), AllPlanes, ZPixmap);
    if (!image)
        return {};
    VSTGUI::Pixels pixels(attributes.width, attributes.height);
    for (int row = 0; row < image->height; ++row)
        for (int column = 0; column < image->width; ++column) {
            const unsigned long pixel = XGetPixel(image, column, row);
            const auto byte = [pixel](int shift) { return static_cast<uint8_t>(pixel >> shift); };
            pixels.set(column, row, VSTGUI::CColor(byte(16), byte(8), byte(0)));
        }
    XDestroyImage(image);
    return pixels;
}

VSTGUI::Pixels EditorWindow::picture()
{
    constexpr int kIdlesBetween = 15, kPicturesAtMost = 20;
    VSTGUI::Pixels last;
    // Until two pictures in turn are equal; some editors never rest.
    for (int i = 0; i < kPicturesAtMost; ++i) {
        for (int idles = 0; idles < kIdlesBetween; ++idles) {
            XSync(display, True);  // with events left, idle does not wait
            idle();
        }
        VSTGUI::Pixels next = drawn();
        const bool rests = next.width > 0 && next.rgba == last.rgba;
        last = std::move(next);
        if (rests)
            break;
    }
    if (last.width == 0)
        throw ToolError("the editor's window does not fit on the display");
    return last;
}

}  // namespace tool
