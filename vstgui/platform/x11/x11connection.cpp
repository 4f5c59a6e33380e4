#include "vstgui/platform/x11/x11connection.h"

#include "vstgui/platform/x11/x11errors.h"
#include "vstgui/platform/x11/x11timer.h"

#include <algorithm>
#include <poll.h>

namespace VSTGUI {
namespace X11 {

namespace {

std::weak_ptr<X11Connection>& current()
{
    static std::weak_ptr<X11Connection> connection;
    return connection;
}

}  // namespace

std::shared_ptr<X11Connection> X11Connection::acquire(IRunLoop& loop)
{
    auto connection = current().lock();
    if (!connection) {
        Display* display = XOpenDisplay(nullptr);
        if (!display)
            return nullptr;
        connection.reset(new X11Connection(display));
        current() = connection;
    }
    connection->addUser(loop);
    return connection;
}

X11Connection::X11Connection(Display* display)
    : display(display), xembed(XInternAtom(display, "_XEMBED", False)),
      xembedInfo(XInternAtom(display, "_XEMBED_INFO", False))
{
}

X11Connection::~X11Connection()
{
    const X11ErrorGuard guard(display);
    if (inputMethod)
        XCloseIM(inputMethod);
    XCloseDisplay(display);
}

void X11Connection::addUser(IRunLoop& loop)
{
    for (LoopUse& use : loops) {
        if (use.loop == &loop) {
            ++use.users;
            return;
        }
    }
    loops.push_back({SharedPointer<IRunLoop>(&loop), 1});
    loop.registerEventHandler(ConnectionNumber(display), this);
    TimerHub::instance().useLoop(loops.front().loop);
}

void X11Connection::release(IRunLoop& loop)
{
    const auto it = std::find_if(loops.begin(), loops.end(),
                                 [&](const LoopUse& use) { return use.loop == &loop; });
    if (it == loops.end() || --it->users > 0)
        return;
    loop.unregisterEventHandler(this);
    loops.erase(it);
    // Running timers move to a loop that is still in use.
    TimerHub::instance().useLoop(loops.empty() ? nullptr
                                               : static_cast<IRunLoop*>(loops.front().loop));
}

XIM X11Connection::getInputMethod()
{
    if (inputMethodTried)
        return inputMethod;
    inputMethodTried = true;
    const X11ErrorGuard guard(display);
    // The modifiers are the host's, too.
    const char* const set = XSetLocaleModifiers(nullptr);
    const std::string hosts = set ? set : "";
    // The user's input method, by the variable XMODIFIERS, or else Xlib's built-in one, which needs
    // no server and handles compose sequences.
    for (const char* const modifiers : {"", "@im=none"}) {
        XSetLocaleModifiers(modifiers);
        if (!inputMethod)
            inputMethod = XOpenIM(display, nullptr, nullptr, nullptr);
    }
    XSetLocaleModifiers(hosts.c_str());
    XIMCallback ended{reinterpret_cast<XPointer>(this), inputMethodEnded};
    if (inputMethod)
        XSetIMValues(inputMethod, XNDestroyCallback, &ended, nullptr);
    return inputMethod;
}

// Xlib calls it when the input method's server has gone, and then frees the method and its contexts.
void X11Connection::inputMethodEnded(XIM, XPointer connection, XPointer)
{
    auto& self = *reinterpret_cast<X11Connection*>(connection);
    self.inputMethod = nullptr;
    self.inputMethodTried = false;
    for (const auto& [window, handler] : self.windows)
        handler->inputMethodEnded();
}

bool X11Connection::nextEvent(XEvent& event)
{
    const X11ErrorGuard guard(display);
    while (XPending(display) > 0) {
        XNextEvent(display, &event);
        // Only the last of consecutive moves is handled.
        while (event.type == MotionNotify && XEventsQueued(display, QueuedAlready) > 0) {
            XEvent next;
            XPeekEvent(display, &next);
            if (next.type != MotionNotify || next.xmotion.window != event.xmotion.window)
                break;
            XNextEvent(display, &event);
        }
        if (event.type == MappingNotify)
            XRefreshKeyboardMapping(&event.xmapping);
        else if (!XFilterEvent(&event, None))
            return true;
    }
    return false;
}

void X11Connection::onEvent()
{
    const auto self = shared_from_this();
    XEvent event;
    while (nextEvent(event)) {
        const auto it = windows.find(event.xany.window);
        if (it != windows.end())
            it->second->handleEvent(event);
    }
    for (const auto& [window, handler] : std::map<Window, X11Window*>(windows)) {
        if (windows.count(window))
            handler->afterEvents();
    }
    const X11ErrorGuard guard(display);
    XFlush(display);
}

void X11Connection::handleQueued()
{
    const auto connection = current().lock();
    if (!connection)
        return;
    bool waiting;
    {
        const X11ErrorGuard guard(connection->display);
        waiting = XPending(connection->display) > 0;
    }
    if (waiting)
        connection->onEvent();
}

void X11Connection::waitAndHandle(int milliseconds)
{
    const auto self = shared_from_this();
    {
        const X11ErrorGuard guard(display);
        XFlush(display);
        if (XEventsQueued(display, QueuedAlready) > 0)
            milliseconds = 0;
    }
    pollfd source{ConnectionNumber(display), POLLIN, 0};
    poll(&source, 1, TimerHub::instance().millisecondsToNext(milliseconds));
    TimerHub::instance().fireDue();
    onEvent();
}

X11Modal* X11Connection::setModal(X11Modal* newModal)
{
    return std::exchange(modal, newModal);
}

}  // namespace X11
}  // namespace VSTGUI
