// X11OptionMenu: shows a menu in a window of its own, with pointer and keyboard grabbed.
#pragma once

#include "vstgui/platform/iplatformoptionmenu.h"
#include "vstgui/platform/x11/cairosurface.h"
#include "vstgui/platform/x11/menupanel.h"
#include "vstgui/platform/x11/x11connection.h"
#include "vstgui/platform/x11/x11frame.h"

#include <memory>

namespace VSTGUI {
namespace X11 {

class X11OptionMenu : public IPlatformOptionMenu, private X11Window, private X11Modal {
public:
    explicit X11OptionMenu(X11Frame& frame) : frame(&frame) { }

    PlatformOptionMenuResult popup(COptionMenu* menu) override;
    // Closes an open menu without a choice.
    void cancel() { finish(-1); }

private:
    bool openWindow(const CPoint& position);
    void closeWindow();
    bool grabInput();
    void handleEvent(XEvent& event) override;
    void afterEvents() override { }
    void pressedOutside() override { cancel(); }
    void onPointer(const CPoint& where);
    void onRelease(const CPoint& where);
    void onKey(XKeyEvent& event);
    void highlight(int32_t entry);
    void finish(int32_t entry);
    void paint();

    SharedPointer<X11Frame> frame;
    std::shared_ptr<X11Connection> connection;
    std::unique_ptr<MenuPanel> panel;
    Window window{0};
    SharedPointer<CairoSurface> backBuffer;
    std::unique_ptr<WindowPainter> painter;
    CPoint openedAt;  // pointer, in the menu's coordinates
    bool pointerMoved{false};
    bool done{false};
    int32_t highlighted{-1};
    int32_t chosen{-1};
};

}  // namespace X11
}  // namespace VSTGUI
