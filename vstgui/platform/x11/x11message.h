// X11Message: a window with a text and buttons.
#pragma once

#include "vstgui/lib/crect.h"
#include "vstgui/platform/x11/cairosurface.h"
#include "vstgui/platform/x11/windowpainter.h"
#include "vstgui/platform/x11/x11connection.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace VSTGUI {
namespace X11 {

// Open until the user closes it or the object is destroyed. The constructor does not wait.
class X11Message : private X11Window {
public:
    // Centred over the window `above`, and kept in front of it by the window manager. The text's
    // lines are separated by line feeds; the labels are those of the buttons from the left, at
    // least one. The last one is the keyboard's at first. The connection must outlive the object.
    X11Message(X11Connection& connection, Window above, const std::string& text,
               const std::string& caption, const std::vector<std::string>& labels = {"OK"});
    ~X11Message() override;

    // The index of the button that closed the window, the last one's if it was closed otherwise;
    // nothing while it is open.
    std::optional<size_t> answer() const
    {
        return window ? std::nullopt : std::optional<size_t>(answered);
    }

private:
    struct Button {
        std::string label;
        CRect place;
    };

    void layOut(const std::string& text, const std::vector<std::string>& labels);
    void openWindow(Window above, const std::string& caption);
    void setWindowProperties(Window above, const std::string& caption);
    std::optional<size_t> buttonAt(const CPoint& where) const;
    void onKey(int key);
    void close(size_t answer);
    void handleEvent(XEvent& event) override;
    void afterEvents() override { }
    void paint();

    X11Connection& connection;
    std::vector<std::string> lines;
    CPoint size;
    std::vector<Button> buttons;
    std::optional<size_t> pressed;
    size_t focused;
    size_t answered;
    Window window{0};  // 0 when closed
    Atom deleteWindow{0};
    SharedPointer<CairoSurface> backBuffer;
    std::unique_ptr<WindowPainter> painter;
};

}  // namespace X11
}  // namespace VSTGUI
