// ZKRFrame: the editor's frame. A view may take all of its mouse events.
#pragma once

#include "vstgui/vstgui.h"

class ZKRFrame : public VSTGUI::CFrame {
public:
    using VSTGUI::CFrame::CFrame;

    // Null: the frame's views get the mouse as usual. The view stays the caller's.
    void setMouseView(VSTGUI::CView* view) { mouseView = view; }

    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseUp(VSTGUI::CPoint& where,
                                        const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint& where,
                                           const VSTGUI::CButtonState& buttons) override;

    CLASS_METHODS_NOCOPY(ZKRFrame, VSTGUI::CFrame)

private:
    VSTGUI::CView* mouseView = nullptr;
};
