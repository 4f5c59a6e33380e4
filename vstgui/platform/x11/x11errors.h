// X11ErrorGuard: ignores the X errors of one connection, which occur when the host destroys its
// window first.
#pragma once

#include <X11/Xlib.h>

namespace VSTGUI {
namespace X11 {

// Xlib has one error handler per process, so a guard encloses Xlib calls only, never callbacks.
// Errors of other connections go to the previous handler.
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
