// X11Connection: the library's own line to the X server, shared by all frames.
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
    // The queue is empty for now.
    virtual void afterEvents() = 0;
};

// Something that waits for the user: meanwhile frames take no input.
class X11Modal {
public:
    virtual ~X11Modal() = default;
    virtual void pressedOutside() = 0;
};

class X11Connection : public IEventHandler, public std::enable_shared_from_this<X11Connection> {
public:
    // Adds a user that lives on that loop. Null when there is no server.
    static std::shared_ptr<X11Connection> acquire(IRunLoop& loop);
    // Takes a user of that loop away; the line ends with the last reference to it.
    void release(IRunLoop& loop);
    ~X11Connection() override;

    Display* getDisplay() const { return display; }
    Atom getXembedAtom() const { return xembed; }
    Atom getXembedInfoAtom() const { return xembedInfo; }
    // Opened at the first call; null without one.
    XIM getInputMethod();

    void addWindow(Window window, X11Window* handler) { windows[window] = handler; }
    void removeWindow(Window window) { windows.erase(window); }

    void onEvent() override;
    // Events that Xlib read along with an answer or while it sent a picture: the descriptor no
    // longer tells a loop of them. For timers, on whose ticks such events are taken up.
    static void handleQueued();
    // For whoever blocks: waits for events, the next timer or extraFd, at most that long, and then
    // handles events and timers. True when extraFd can be read. -1: no such descriptor.
    bool waitAndHandle(int extraFd, int milliseconds);

    X11Modal* getModal() const { return modal; }
    // Returns the one before, to be put back afterwards.
    X11Modal* setModal(X11Modal* newModal);

private:
    struct LoopUse {
        SharedPointer<IRunLoop> loop;
        int users;
    };

    explicit X11Connection(Display* display);
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
