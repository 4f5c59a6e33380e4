// The window of an application that a window belongs to.
#pragma once

#include <X11/Xlib.h>

namespace VSTGUI {
namespace X11 {

// The window that the window manager handles: it has the property WM_STATE or is a child of the
// root. For use inside an X11ErrorGuard.
Window topLevelOf(Display* display, Window window);

}  // namespace X11
}  // namespace VSTGUI
