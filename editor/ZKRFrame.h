// ZKRFrame: the editor's frame. A view may take all of its mouse events.
#pragma once

#include "vstgui/vstgui.h"

class ZKRFrame : public VSTGUI::CFrame {
public:
    using VSTGUI::CFrame::CFrame;

    // Null: the frame's views get the mouse as usual. The view stays the caller's. A drag that goes
    // on in a view of the frame ends.
    void setMouseView(VSTGUI::CView* view);

    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseUp(VSTGUI::CPoint& where,
                                        const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint& where,
                                           const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseCancel() override;
    VSTGUI::CMouseEventResult onMouseEntered(VSTGUI::CPoint& where,
                                             const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseExited(VSTGUI::CPoint& where,
                                            const VSTGUI::CButtonState& buttons) override;
    using VSTGUI::CFrame::onWheel;
    bool onWheel(const VSTGUI::CPoint& where, const VSTGUI::CMouseWheelAxis& axis,
                 const float& distance, const VSTGUI::CButtonState& buttons) override;

    CLASS_METHODS_NOCOPY(ZKRFrame, VSTGUI::CFrame)

private:
    VSTGUI::CView* mouseView = nullptr;
};
