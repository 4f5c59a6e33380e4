// The window takes the size that the plug-in requests; the user cannot resize it.
#include "tools/commands/EditorWindow.h"

#include "tools/common/ToolError.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <poll.h>

namespace tool {

EditorWindow::EditorWindow(host::NativePlugin& plugin, const std::string& title)
    : plugin(plugin), display(XOpenDisplay(nullptr))
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
    constexpr int kIdleMs = 16;
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
        plugin.idle();
        applyRequestedSize();
        pollfd connection{ConnectionNumber(display), POLLIN, 0};
        poll(&connection, 1, kIdleMs);
    }
}

}  // namespace tool
