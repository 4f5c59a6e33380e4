#include "vstgui/platform/x11/x11errors.h"

namespace VSTGUI {
namespace X11 {

namespace {

thread_local X11ErrorGuard* innermost = nullptr;

}  // namespace

X11ErrorGuard::X11ErrorGuard(Display* display)
    : display(display), previous(XSetErrorHandler(&X11ErrorGuard::handle)), outer(innermost)
{
    innermost = this;
}

X11ErrorGuard::~X11ErrorGuard()
{
    innermost = outer;
    XSetErrorHandler(previous);
}

int X11ErrorGuard::handle(Display* display, XErrorEvent* error)
{
    XErrorHandler foreign = nullptr;
    for (const X11ErrorGuard* guard = innermost; guard; guard = guard->outer) {
        if (guard->display == display)
            return 0;
        foreign = guard->previous;
    }
    return foreign && foreign != &X11ErrorGuard::handle ? foreign(display, error) : 0;
}

}  // namespace X11
}  // namespace VSTGUI
