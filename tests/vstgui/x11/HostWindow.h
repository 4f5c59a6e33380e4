// A host's window on its own connection, and a user who works it through xdotool.
#pragma once

// Before the macros of Xlib.
#include <gtest/gtest.h>

#include "vstgui/platform/pixels.h"
#include "vstgui/platform/x11/childprocess.h"
#include "vstgui/platform/x11/idlerunloop.h"
#include "vstgui/platform/x11/steadyclock.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <functional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

class HostWindow {
public:
    HostWindow(int x, int y, unsigned int width, unsigned int height)
        : display(XOpenDisplay(nullptr)), left(x), top(y)
    {
        window = XCreateSimpleWindow(display, DefaultRootWindow(display), x, y, width, height, 0, 0,
                                     0xFFFFFF);
        XMapWindow(display, window);
        XSync(display, False);
    }
    ~HostWindow() { XCloseDisplay(display); }
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    void* handle() const { return reinterpret_cast<void*>(static_cast<uintptr_t>(window)); }

    unsigned int countChildren()
    {
        Window root = 0;
        Window parent = 0;
        Window* children = nullptr;
        unsigned int count = 0;
        XQueryTree(display, window, &root, &parent, &children, &count);
        if (children)
            XFree(children);
        return count;
    }

    void destroy()
    {
        XDestroyWindow(display, window);
        XSync(display, False);
    }

    void unmap()
    {
        XUnmapWindow(display, window);
        XSync(display, False);
    }

    void takeKeyboard()
    {
        XSetInputFocus(display, window, RevertToParent, CurrentTime);
        XSync(display, False);
    }
    bool hasKeyboard()
    {
        Window holder = None;
        int revert = 0;
        XGetInputFocus(display, &holder, &revert);
        return holder == window;
    }

    // Puts characters on keys that have none, so that xdotool need not change keys while it types.
    void addKeys(const std::vector<KeySym>& symbols)
    {
        int first = 0;
        int last = 0;
        int perKey = 0;
        XDisplayKeycodes(display, &first, &last);
        for (KeySym symbol : symbols) {
            for (int code = last; code >= first; --code) {
                KeySym* present =
                    XGetKeyboardMapping(display, static_cast<KeyCode>(code), 1, &perKey);
                const bool spare =
                    std::all_of(present, present + perKey, [](KeySym k) { return k == NoSymbol; });
                XFree(present);
                if (spare) {
                    XChangeKeyboardMapping(display, code, 1, &symbol, 1);
                    break;
                }
            }
        }
        XSync(display, False);
    }

    // Nobody else holds pointer or keyboard.
    bool inputIsFree()
    {
        const Window root = DefaultRootWindow(display);
        const int pointer = XGrabPointer(display, root, False, ButtonPressMask, GrabModeAsync,
                                         GrabModeAsync, None, None, CurrentTime);
        const int keyboard =
            XGrabKeyboard(display, root, False, GrabModeAsync, GrabModeAsync, CurrentTime);
        XUngrabPointer(display, CurrentTime);
        XUngrabKeyboard(display, CurrentTime);
        XSync(display, False);
        return pointer == GrabSuccess && keyboard == GrabSuccess;
    }

    // The screen, from this window's top left corner.
    VSTGUI::Pixels screenshot(int width, int height)
    {
        XImage* image = XGetImage(display, DefaultRootWindow(display), left, top,
                                  static_cast<unsigned int>(width),
                                  static_cast<unsigned int>(height), AllPlanes, ZPixmap);
        VSTGUI::Pixels pixels(width, height);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const unsigned long p = XGetPixel(image, x, y);
                pixels.set(x, y,
                           VSTGUI::CColor(static_cast<uint8_t>(p >> 16),
                                          static_cast<uint8_t>(p >> 8), static_cast<uint8_t>(p)));
            }
        }
        XDestroyImage(image);
        return pixels;
    }

    // What a window manager does: the titles of the windows that belong in front of this one, the
    // keyboard for each of them, and the request to close.
    std::vector<std::string> titlesInFront(bool close = false)
    {
        Window ignored = 0;
        Window* children = nullptr;
        unsigned int count = 0;
        XQueryTree(display, DefaultRootWindow(display), &ignored, &ignored, &children, &count);
        std::vector<std::string> titles;
        for (unsigned int i = 0; i < count; ++i) {
            Window owner = 0;
            char* title = nullptr;
            if (!XGetTransientForHint(display, children[i], &owner) || owner != window)
                continue;
            XFetchName(display, children[i], &title);
            titles.emplace_back(title ? title : "");
            XFree(title);
            XSetInputFocus(display, children[i], RevertToPointerRoot, CurrentTime);
            XEvent event{};
            event.xclient.type = ClientMessage;
            event.xclient.window = children[i];
            event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
            event.xclient.format = 32;
            event.xclient.data.l[0] =
                static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
            if (close)
                XSendEvent(display, children[i], False, NoEventMask, &event);
        }
        XFree(children);
        XSync(display, False);
        return titles;
    }

    // xdotool's words for moving the pointer inside this window.
    std::string move(int x, int y) const
    {
        return " mousemove " + std::to_string(left + x) + " " + std::to_string(top + y);
    }

private:
    Display* display;
    Window window{0};
    int left;
    int top;
};

inline void pumpFor(uint64_t milliseconds)
{
    const uint64_t end = VSTGUI::X11::steadyMilliseconds() + milliseconds;
    while (VSTGUI::X11::steadyMilliseconds() < end) {
        VSTGUI::X11::IdleRunLoop::instance().pump();
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

// Lets the user act while the host's idle calls go on; {} marks where a sentence to type stands.
inline void user(const std::string& commands, const std::string& sentence = "")
{
    std::vector<std::string> words{"xdotool"};
    std::istringstream stream(commands);
    for (std::string word; stream >> word;)
        words.push_back(word == "{}" ? sentence : word);
    VSTGUI::X11::ChildProcess tool(words);
    ASSERT_TRUE(tool.isRunning());
    std::string output;
    while (tool.readOutput(output))
        pumpFor(5);
    ASSERT_TRUE(tool.finish()) << commands;
    pumpFor(60);
}
