// A window on an X11 display, where all share one connection.
#include "EditorWindow.h"

#include <X11/Xlib.h>

#include <chrono>
#include <cstdint>

namespace {

Display* display()
{
    static Display* const connection = XOpenDisplay(nullptr);
    return connection;
}

Window idOf(void* window)
{
    return static_cast<Window>(reinterpret_cast<std::uintptr_t>(window));
}

Window childOf(void* window)
{
    Window ignored = 0, *children = nullptr;
    unsigned count = 0;
    XQueryTree(display(), idOf(window), &ignored, &ignored, &children, &count);
    const Window child = count > 0 ? children[0] : 0;
    if (children)
        XFree(children);
    return child;
}

}  // namespace

void EditorWindow::open(int width, int height)
{
    if (!display())
        return;
    const Window made =
        XCreateSimpleWindow(display(), DefaultRootWindow(display()), 0, 0,
                            static_cast<unsigned>(width), static_cast<unsigned>(height), 0, 0, 0);
    window = reinterpret_cast<void*>(static_cast<std::uintptr_t>(made));
    XMapWindow(display(), made);
    // The plug-in draws over a connection of its own, where the window must exist by now.
    XSync(display(), True);
}

void EditorWindow::resize(int width, int height)
{
    XResizeWindow(display(), idOf(window), static_cast<unsigned>(width),
                  static_cast<unsigned>(height));
    XSync(display(), True);
}

void EditorWindow::close()
{
    XDestroyWindow(display(), idOf(window));
    XSync(display(), True);
}

void EditorWindow::send(Act act, int x, int y)
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    XEvent event{};
    // Motion has these fields at the same places, and instead of the button a hint: none.
    XButtonEvent& mouse = event.xbutton;
    mouse.type = act == Act::Move ? MotionNotify
        : act == Act::Release     ? ButtonRelease
                                  : ButtonPress;
    mouse.display = display();
    mouse.window = childOf(window);
    mouse.root = DefaultRootWindow(display());
    mouse.time =
        static_cast<Time>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
    mouse.x = mouse.x_root = x;
    mouse.y = mouse.y_root = y;
    mouse.same_screen = True;
    mouse.state = held ? Button1Mask : 0;
    constexpr unsigned kButtons[] = {0, Button1, Button1, Button4, Button5};
    mouse.button = kButtons[static_cast<int>(act)];
    held = act == Act::Press || (held && act != Act::Release);
    if (mouse.window)
        XSendEvent(display(), mouse.window, False, NoEventMask, &event);
    // The plug-in's own connection may end the window next, and be served first.
    XSync(display(), True);
}
