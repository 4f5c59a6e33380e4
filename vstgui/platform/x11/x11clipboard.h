// X11Clipboard: text from and for the clipboard, by selections of the X server.
#pragma once

#include <X11/Xlib.h>
#include <optional>
#include <string>

namespace VSTGUI {
namespace X11 {

// Text is UTF-8. All functions are for use inside an X11ErrorGuard.
class X11Clipboard {
public:
    // The window must select changes of properties, and outlive the object.
    X11Clipboard(Display* display, Window window);

    // `time` is that of the user's input.
    void copy(const std::string& text, Time time);
    // Ask for the text of the clipboard, or of what is selected anywhere (for the middle button). A
    // later event brings it.
    void requestClipboard(Time time) { request(clipboard, time); }
    void requestSelected(Time time);

    // For each event of the window. Returns a requested text.
    std::optional<std::string> handle(const XEvent& event);

private:
    void request(Atom selection, Time time);
    void answer(const XSelectionRequestEvent& event);
    // Removes the property, which tells a sender of parts to go on.
    std::string takeProperty(Atom& type);

    Display* const display;
    const Window window;
    const Atom clipboard, targets, utf8, incremental, property;
    std::string copied;
    std::string parts;  // of a long text
    bool receivingParts{false};
};

}  // namespace X11
}  // namespace VSTGUI
