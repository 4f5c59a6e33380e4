// X11Message: a text in a window of its own, which needs no program of the desktop.
#pragma once

#include "vstgui/lib/crect.h"
#include "vstgui/platform/x11/cairosurface.h"
#include "vstgui/platform/x11/windowpainter.h"
#include "vstgui/platform/x11/x11connection.h"

#include <memory>
#include <string>
#include <vector>

namespace VSTGUI {
namespace X11 {

// Open until the user closes it or it is destroyed. Nobody waits for it.
class X11Message : private X11Window {
public:
    // In the middle of the window `above`, and in front of it where there is a window manager. The
    // lines of the text are parted by line feeds. The connection outlives it.
    X11Message(X11Connection& connection, Window above, const std::string& text,
               const std::string& caption);
    ~X11Message() override;

private:
    void layOut(const std::string& text);
    void openWindow(Window above, const std::string& caption);
    void introduce(Window above, const std::string& caption);
    void close();
    void handleEvent(XEvent& event) override;
    void afterEvents() override { }
    void paint();

    X11Connection& connection;
    std::vector<std::string> lines;
    CPoint size;
    CRect button;
    bool pressed{false};  // the button
    Window window{0};     // 0 when closed
    Atom deleteWindow{0};
    SharedPointer<CairoSurface> backBuffer;
    std::unique_ptr<WindowPainter> painter;
};

}  // namespace X11
}  // namespace VSTGUI
