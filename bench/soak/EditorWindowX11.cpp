// A window on an X11 display. Input is sent to the window that the editor has put into it.
#include "EditorWindow.h"

#include "HostError.h"

#include <X11/Xlib.h>

#include <chrono>

namespace {

class X11EditorWindow : public EditorWindow {
public:
    X11EditorWindow(host::NativePlugin& plugin, const std::string& title)
        : display(XOpenDisplay(nullptr))
    {
        if (!display)
            throw host::HostError("there is no display to open editors on");
        try {
            open(plugin, title);
        } catch (...) {
            XCloseDisplay(display);
            throw;
        }
    }
    ~X11EditorWindow() override
    {
        XDestroyWindow(display, window);
        XCloseDisplay(display);
    }

    void resize(int width, int height) override
    {
        XResizeWindow(display, window, static_cast<unsigned>(width), static_cast<unsigned>(height));
        XFlush(display);
    }
    void turn() override
    {
        XEvent event;
        while (XPending(display))
            XNextEvent(display, &event);
    }
    void moveMouse(int x, int y) override
    {
        XEvent event{};
        event.xmotion.type = MotionNotify;
        place(event.xmotion, x, y);
        event.xmotion.state = held;
        send(PointerMotionMask, event);
    }
    void pressButton(int x, int y, bool down) override { button(x, y, Button1, down); }
    void turnWheel(int x, int y, bool up) override
    {
        button(x, y, up ? Button4 : Button5, true);
        button(x, y, up ? Button4 : Button5, false);
    }

private:
    void open(host::NativePlugin& plugin, const std::string& title)
    {
        const EditorSize size = editorSize(plugin);
        window = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0,
                                     static_cast<unsigned>(size.width),
                                     static_cast<unsigned>(size.height), 0, 0, 0);
        XStoreName(display, window, title.c_str());
        XMapWindow(display, window);
        // The plug-in draws over a connection of its own, where the window must exist by now.
        XSync(display, False);
        if (plugin.effect()->dispatcher(plugin.effect(), effEditOpen, 0, 0,
                                        reinterpret_cast<void*>(window), 0.0f)
            == 0)
            throw host::HostError("the editor does not open");
    }

    template <typename Event>
    void place(Event& event, int x, int y)
    {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        event.display = display;
        event.window = child();
        event.root = DefaultRootWindow(display);
        event.time =
            static_cast<Time>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
        event.x = event.x_root = x;
        event.y = event.y_root = y;
        event.same_screen = True;
    }
    void button(int x, int y, unsigned number, bool down)
    {
        XEvent event{};
        event.xbutton.type = down ? ButtonPress : ButtonRelease;
        place(event.xbutton, x, y);
        event.xbutton.state = held;
        event.xbutton.button = number;
        if (number == Button1)
            held = down ? Button1Mask : 0;
        send(down ? ButtonPressMask : ButtonReleaseMask, event);
    }
    void send(long mask, XEvent& event)
    {
        if (event.xany.window)
            XSendEvent(display, event.xany.window, False, mask, &event);
        // The plug-in's own connection may end the window next, and be served first.
        XSync(display, False);
    }
    Window child()
    {
        Window root = 0, parent = 0, first = 0;
        Window* children = nullptr;
        unsigned count = 0;
        if (XQueryTree(display, window, &root, &parent, &children, &count) && count > 0)
            first = children[0];
        if (children)
            XFree(children);
        return first;
    }

    Display* display;
    Window window = 0;
    unsigned held = 0;
};

}  // namespace

std::unique_ptr<EditorWindow> openEditorWindow(host::NativePlugin& plugin, const std::string& title)
{
    return std::make_unique<X11EditorWindow>(plugin, title);
}
