// The window around an editor: it takes the size that the plug-in asks for and cannot be resized by
// hand.
#include "tools/commands/EditorWindow.h"

#include "tools/common/ToolError.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <poll.h>

namespace tool {

EditorWindow::EditorWindow(host::NativePlugin& pluginToShow, const std::string& title)
    : plugin(pluginToShow), display(XOpenDisplay(nullptr))
{
    if (!display)
        throw ToolError("there is no display to open the editor on");
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
    // The plug-in draws over a connection of its own, where the window must exist by now.
    XSync(display, False);
    effect->dispatcher(effect, effEditOpen, 0, 0, reinterpret_cast<void*>(window), 0.0f);
    follow();
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

// What the plug-in has asked for since.
void EditorWindow::follow()
{
    const host::HostReports reports = plugin.reports();
    if (reports.windowSizes == sizesSeen)
        return;
    sizesSeen = reports.windowSizes;
    resize(reports.windowWidth, reports.windowHeight);
}

void EditorWindow::run()
{
    constexpr int kIdleMs = 16;
    for (;;) {
        while (XPending(display)) {
            XEvent event;
            XNextEvent(display, &event);
            if (event.type == ClientMessage
                && static_cast<Atom>(event.xclient.data.l[0]) == deleteMessage)
                return;
            // Somebody else has ended the window.
            if (event.type == DestroyNotify && event.xdestroywindow.window == window) {
                window = 0;
                return;
            }
        }
        plugin.idle();
        follow();
        pollfd connection{ConnectionNumber(display), POLLIN, 0};
        poll(&connection, 1, kIdleMs);
    }
}

}  // namespace tool
