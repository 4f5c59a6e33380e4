// Input on an X11 display, over one connection for all windows.
#include "tests/soak/InstanceWindow.h"

#include <X11/Xlib.h>

#include <chrono>
#include <cstdint>

void InstanceWindow::send(Act act, int x, int y)
{
    static Display* const display = XOpenDisplay(nullptr);
    Window child = 0, ignored = 0, *children = nullptr;
    unsigned count = 0;
    XQueryTree(display, static_cast<Window>(reinterpret_cast<std::uintptr_t>(window.handle())),
               &ignored, &ignored, &children, &count);
    if (count > 0)
        child = children[0];
    if (children)
        XFree(children);
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    XEvent event{};
    // A motion event has the same layout, with is_hint (0) in place of the button.
    XButtonEvent& mouse = event.xbutton;
    mouse.type = act == Act::Move ? MotionNotify
        : act == Act::Release     ? ButtonRelease
                                  : ButtonPress;
    mouse.display = display;
    mouse.window = child;
    mouse.root = DefaultRootWindow(display);
    mouse.time =
        static_cast<Time>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
    mouse.x = mouse.x_root = x;
    mouse.y = mouse.y_root = y;
    mouse.same_screen = True;
    mouse.state = held ? Button1Mask : 0;
    constexpr unsigned kButtons[] = {0, Button1, Button1, Button4, Button5};
    mouse.button = kButtons[static_cast<int>(act)];
    held = act == Act::Press || (held && act != Act::Release);
    if (child)
        XSendEvent(display, child, False, NoEventMask, &event);
    // Otherwise the server may first destroy the window at the request of the plug-in's connection.
    XSync(display, True);
}
