// X11Connection: the library's connection to the X server, shared by all frames.
#pragma once

#include "vstgui/platform/x11/irunloop.h"

#include <X11/Xlib.h>
#include <map>
#include <memory>
#include <vector>

namespace VSTGUI {
namespace X11 {

class X11Window {
public:
    virtual ~X11Window() = default;
    virtual void handleEvent(XEvent& event) = 0;
    // Called when all pending events have been handled.
    virtual void afterEvents() = 0;
    // The input method and all contexts made of it no longer exist.
    virtual void inputMethodEnded() { }
};

// A menu that waits for the user; meanwhile frames get no input.
class X11Modal {
public:
    virtual ~X11Modal() = default;
    virtual void pressedOutside() = 0;
};

class X11Connection : public IEventHandler, public std::enable_shared_from_this<X11Connection> {
public:
    // Returns the connection and counts a user on that loop. Null when there is no server.
    static std::shared_ptr<X11Connection> acquire(IRunLoop& loop);
    // Removes a user on that loop. The connection closes with the last reference to it.
    void release(IRunLoop& loop);
    ~X11Connection() override;

    Display* getDisplay() const { return display; }
    Atom getXembedAtom() const { return xembed; }
    Atom getXembedInfoAtom() const { return xembedInfo; }
    // Opened at the first call and at the first after its server has ended; null if there is none.
    XIM getInputMethod();

    void addWindow(Window window, X11Window* handler) { windows[window] = handler; }
    void removeWindow(Window window) { windows.erase(window); }
    // What handles an added window's events; null for other windows.
    X11Window* handlerOf(Window window) const
    {
        const auto it = windows.find(window);
        return it == windows.end() ? nullptr : it->second;
    }

    void onEvent() override;
    // Handles events that Xlib has read from the socket while it waited for a reply or sent an
    // image; run loops do not see those. Called at each timer tick.
    static void handleQueued();
    // For menus, which block: waits for events or the next timer, at most that long, then handles
    // events and timers.
    void waitAndHandle(int milliseconds);

    X11Modal* getModal() const { return modal; }
    // Returns the previous one, to be set again afterwards.
    X11Modal* setModal(X11Modal* newModal);

private:
    struct LoopUse {
        SharedPointer<IRunLoop> loop;
        int users;
    };

    explicit X11Connection(Display* display);
    static void inputMethodEnded(XIM, XPointer connection, XPointer);
    bool nextEvent(XEvent& event);
    void addUser(IRunLoop& loop);

    Display* display;
    Atom xembed;
    Atom xembedInfo;
    XIM inputMethod{nullptr};
    bool inputMethodTried{false};
    std::map<Window, X11Window*> windows;
    std::vector<LoopUse> loops;
    X11Modal* modal{nullptr};
};

}  // namespace X11
}  // namespace VSTGUI
