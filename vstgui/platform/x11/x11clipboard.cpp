#include "vstgui/platform/x11/x11clipboard.h"

#include <X11/Xatom.h>

namespace VSTGUI {
namespace X11 {

namespace {

constexpr size_t kMaxSize = 1 << 16;  // bytes of a text; the rest is left out

}  // namespace

X11Clipboard::X11Clipboard(Display* display, Window window)
    : display(display), window(window), clipboard(XInternAtom(display, "CLIPBOARD", False)),
      targets(XInternAtom(display, "TARGETS", False)),
      utf8(XInternAtom(display, "UTF8_STRING", False)),
      incremental(XInternAtom(display, "INCR", False)),
      property(XInternAtom(display, "ZKR_PASTE", False))
{
}

void X11Clipboard::copy(const std::string& text, Time time)
{
    copied = text;
    XSetSelectionOwner(display, clipboard, window, time);
}

void X11Clipboard::requestSelected(Time time)
{
    request(XA_PRIMARY, time);
}

void X11Clipboard::request(Atom selection, Time time)
{
    receivingParts = false;
    XDeleteProperty(display, window, property);
    XConvertSelection(display, selection, utf8, property, window, time);
}

std::optional<std::string> X11Clipboard::handle(const XEvent& event)
{
    Atom type = None;
    if (event.type == SelectionRequest) {
        answer(event.xselectionrequest);
    } else if (event.type == SelectionNotify && event.xselection.property == property) {
        const std::string text = takeProperty(type);
        if (type == utf8)
            return text;
        receivingParts = type == incremental;
        parts.clear();
    } else if (event.type == PropertyNotify && receivingParts && event.xproperty.atom == property
               && event.xproperty.state == PropertyNewValue) {
        const std::string part = takeProperty(type);
        if (parts.size() < kMaxSize)
            parts += part;
        // An empty part is the end.
        receivingParts = !part.empty();
        if (!receivingParts)
            return parts;
    }
    return {};
}

std::string X11Clipboard::takeProperty(Atom& type)
{
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* value = nullptr;
    XGetWindowProperty(display, window, property, 0, kMaxSize / 4, False, AnyPropertyType, &type,
                       &format, &count, &left, &value);
    const std::string text =
        format == 8 ? std::string(reinterpret_cast<const char*>(value), count) : "";
    if (value)
        XFree(value);
    XDeleteProperty(display, window, property);
    return text;
}

void X11Clipboard::answer(const XSelectionRequestEvent& event)
{
    XEvent reply{};
    reply.xselection.type = SelectionNotify;
    reply.xselection.requestor = event.requestor;
    reply.xselection.selection = event.selection;
    reply.xselection.target = event.target;
    reply.xselection.time = event.time;
    // Old clients name no property.
    const Atom place = event.property != None ? event.property : event.target;
    const Atom offered[] = {targets, utf8};
    if (event.target == targets)
        XChangeProperty(display, event.requestor, place, XA_ATOM, 32, PropModeReplace,
                        reinterpret_cast<const unsigned char*>(offered), 2);
    else if (event.target == utf8)
        XChangeProperty(display, event.requestor, place, utf8, 8, PropModeReplace,
                        reinterpret_cast<const unsigned char*>(copied.data()),
                        static_cast<int>(copied.size()));
    if (event.target == targets || event.target == utf8)
        reply.xselection.property = place;
    XSendEvent(display, event.requestor, False, NoEventMask, &reply);
    XFlush(display);
}

}  // namespace X11
}  // namespace VSTGUI
