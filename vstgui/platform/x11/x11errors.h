// X11ErrorGuard: swallows X errors of one connection, which come whenever the host's window goes
// first.
#pragma once

#include <X11/Xlib.h>

namespace VSTGUI {
namespace X11 {

// Xlib's handler is the whole process's: stand around calls of Xlib only, never around callbacks.
// Other connections' errors go to the handler that was there before.
class X11ErrorGuard {
public:
    explicit X11ErrorGuard(Display* display);
    ~X11ErrorGuard();
    X11ErrorGuard(const X11ErrorGuard&) = delete;
    X11ErrorGuard& operator=(const X11ErrorGuard&) = delete;

private:
    static int handle(Display* display, XErrorEvent* error);

    Display* display;
    XErrorHandler previous;
    X11ErrorGuard* outer;
};

}  // namespace X11
}  // namespace VSTGUI
