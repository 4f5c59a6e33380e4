// User input through xdotool, and what a window manager sees of windows.
#pragma once

// Before the macros of Xlib.
#include "platform/posix/ChildProcess.h"
#include "tests/vstgui/OpenFrame.h"
#include "vstgui/platform/x11/x11errors.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

// Runs xdotool while the host's loop runs; {} in the commands stands for the sentence to type.
inline void user(const std::string& commands, const std::string& sentence = "")
{
    std::vector<std::string> words{"xdotool"};
    std::istringstream stream(commands);
    for (std::string word; stream >> word;)
        words.push_back(word == "{}" ? sentence : word);
    platform::ChildProcess tool(platform::ChildProcess::Role::Desktop, words);
    ASSERT_TRUE(tool.started()) << tool.startError();
    std::string output;
    while (tool.readOutput(output))
        pump(5);
    ASSERT_EQ(tool.wait(), 0) << commands;
    pump();
}

// xdotool's command for moving the pointer inside the host's window.
inline std::string to(int x, int y)
{
    return " mousemove " + std::to_string(kHost.x + x) + " " + std::to_string(kHost.y + y);
}

class Desktop {
public:
    Desktop() : display(XOpenDisplay(nullptr)) { }
    ~Desktop() { XCloseDisplay(display); }
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    // Sends a request for a window that does not exist.
    void causeError()
    {
        XDestroyWindow(display, 0);
        XSync(display, False);
    }

    void unmap(void* window)
    {
        XUnmapWindow(display, asWindow(window));
        XSync(display, False);
    }
    // Maps the window within another one, or on the screen.
    void show(void* window, void* parent)
    {
        XReparentWindow(display, asWindow(window),
                        parent ? asWindow(parent) : DefaultRootWindow(display), 0, 0);
        XMapWindow(display, asWindow(window));
        XSync(display, False);
    }
    bool isMapped(void* window)
    {
        XWindowAttributes attributes{};
        return XGetWindowAttributes(display, asWindow(window), &attributes)
            && attributes.map_state == IsViewable;
    }

    bool hasKeyboard(const HostWindow& host)
    {
        ::Window holder = None;
        int revert = 0;
        XGetInputFocus(display, &holder, &revert);
        return holder == asWindow(host.handle());
    }

    // Moves the focus as a window manager does that holds the keyboard meanwhile.
    void focusDuringGrab(const HostWindow& host)
    {
        XGrabKeyboard(display, DefaultRootWindow(display), False, GrabModeAsync, GrabModeAsync,
                      CurrentTime);
        XSetInputFocus(display, asWindow(host.handle()), RevertToParent, CurrentTime);
        XUngrabKeyboard(display, CurrentTime);
        XSync(display, False);
    }

    // Sends a client message with its first two numbers.
    void send(::Window window, const char* type, long first, long second)
    {
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = window;
        event.xclient.message_type = XInternAtom(display, type, False);
        event.xclient.format = 32;
        event.xclient.data.l[0] = first;
        event.xclient.data.l[1] = second;
        XSendEvent(display, window, False, NoEventMask, &event);
        XSync(display, False);
    }

    // Maps characters to the last key codes, so that xdotool need not remap keys while it types.
    void addKeys(std::vector<KeySym> symbols)
    {
        const int count = static_cast<int>(symbols.size());
        int first = 0, last = 0;
        XDisplayKeycodes(display, &first, &last);
        XChangeKeyboardMapping(display, last - count + 1, 1, symbols.data(), count);
        XSync(display, False);
    }

    // Whether nobody has grabbed pointer or keyboard.
    bool inputIsFree()
    {
        const ::Window root = DefaultRootWindow(display);
        const int pointer = XGrabPointer(display, root, False, ButtonPressMask, GrabModeAsync,
                                         GrabModeAsync, None, None, CurrentTime);
        const int keyboard =
            XGrabKeyboard(display, root, False, GrabModeAsync, GrabModeAsync, CurrentTime);
        XUngrabPointer(display, CurrentTime);
        XUngrabKeyboard(display, CurrentTime);
        XSync(display, False);
        return pointer == GrabSuccess && keyboard == GrabSuccess;
    }

    // The topmost window other than the host's; None if there is none. Windows may close meanwhile.
    ::Window windowInFrontOf(const HostWindow& host)
    {
        const X11::X11ErrorGuard guard(display);
        ::Window front = None;
        for (const ::Window each : windows()) {
            XWindowAttributes attributes{};
            if (each != asWindow(host.handle()) && XGetWindowAttributes(display, each, &attributes)
                && attributes.map_state == IsViewable && !attributes.override_redirect)
                front = each;
        }
        return front;
    }
    void focus(::Window window)
    {
        const X11::X11ErrorGuard guard(display);
        XSetInputFocus(display, window, RevertToPointerRoot, CurrentTime);
        XSync(display, False);
    }

    static ::Window asWindow(void* handle)
    {
        return static_cast<::Window>(reinterpret_cast<uintptr_t>(handle));
    }

    void move(const HostWindow& host, int x, int y)
    {
        XMoveWindow(display, asWindow(host.handle()), x, y);
        XSync(display, False);
    }

    // Acts as a window manager on the windows that are transient for the host's: gives each the
    // keyboard, asks it to close if `close`, and returns their titles, of those only that lie
    // wholly on the screen.
    std::vector<std::string> titlesInFront(const HostWindow& host, bool close = false)
    {
        std::vector<std::string> titles;
        for (const ::Window each : windows()) {
            ::Window owner = 0;
            char* title = nullptr;
            if (!XGetTransientForHint(display, each, &owner) || owner != asWindow(host.handle()))
                continue;
            XFetchName(display, each, &title);
            if (isOnScreen(each))
                titles.emplace_back(title ? title : "");
            XFree(title);
            XSetInputFocus(display, each, RevertToPointerRoot, CurrentTime);
            if (close)
                send(each, "WM_PROTOCOLS",
                     static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False)), 0);
        }
        XSync(display, False);
        return titles;
    }

private:
    // All of the screen, the topmost last.
    std::vector<::Window> windows()
    {
        ::Window ignored = 0;
        ::Window* children = nullptr;
        unsigned int count = 0;
        XQueryTree(display, DefaultRootWindow(display), &ignored, &ignored, &children, &count);
        const std::vector<::Window> all(children, children + count);
        XFree(children);
        return all;
    }
    bool isOnScreen(::Window window)
    {
        XWindowAttributes a{};
        XGetWindowAttributes(display, window, &a);
        const int screen = DefaultScreen(display);
        return a.x >= 0 && a.y >= 0 && a.x + a.width <= DisplayWidth(display, screen)
            && a.y + a.height <= DisplayHeight(display, screen);
    }

    Display* display;
};
