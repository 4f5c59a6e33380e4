#include "vstgui/platform/x11/x11toplevel.h"

#include <X11/Xatom.h>

namespace VSTGUI {
namespace X11 {

Window topLevelOf(Display* display, Window window)
{
    const Atom mark = XInternAtom(display, "WM_STATE", False);
    for (;;) {
        Atom type = None;
        int format = 0;
        unsigned long count = 0;
        unsigned long left = 0;
        unsigned char* value = nullptr;
        XGetWindowProperty(display, window, mark, 0, 0, False, AnyPropertyType, &type, &format,
                           &count, &left, &value);
        if (value)
            XFree(value);
        Window root = 0;
        Window parent = 0;
        Window* children = nullptr;
        unsigned int childCount = 0;
        if (type != None || !XQueryTree(display, window, &root, &parent, &children, &childCount))
            return window;
        if (children)
            XFree(children);
        if (parent == root || parent == 0)
            return window;
        window = parent;
    }
}

}  // namespace X11
}  // namespace VSTGUI
