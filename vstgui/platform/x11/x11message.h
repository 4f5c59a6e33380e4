// X11Message: a window with a text and an OK button.
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

// Open until the user closes it or the object is destroyed. The constructor does not wait.
class X11Message : private X11Window {
public:
    // Centred over the window `above`, and kept in front of it by the window manager. The text's
    // lines are separated by line feeds. The connection must outlive the object.
    X11Message(X11Connection& connection, Window above, const std::string& text,
               const std::string& caption);
    ~X11Message() override;

private:
    void layOut(const std::string& text);
    void openWindow(Window above, const std::string& caption);
    void setWindowProperties(Window above, const std::string& caption);
    void close();
    void handleEvent(XEvent& event) override;
    void afterEvents() override { }
    void paint();

    X11Connection& connection;
    std::vector<std::string> lines;
    CPoint size;
    CRect button;
    bool pressed{false};  // the OK button
    Window window{0};     // 0 when closed
    Atom deleteWindow{0};
    SharedPointer<CairoSurface> backBuffer;
    std::unique_ptr<WindowPainter> painter;
};

}  // namespace X11
}  // namespace VSTGUI
