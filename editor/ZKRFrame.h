// ZKRFrame: the editor's frame. One view can be given all of its mouse events.
#pragma once

#include "vstgui/vstgui.h"

#include <memory>
#include <utility>

class ZKRFrame : public VSTGUI::CFrame {
public:
    using VSTGUI::CFrame::CFrame;

    // Sends the frame's mouse events to `view`, which stays the caller's; null ends that. A drag
    // under way in a view of the frame is cancelled.
    void setMouseView(VSTGUI::CView* view);

    // Keeps a reference to the editor, which listens to the controls, as long as the frame exists.
    // The host may close and release it during an event, which the frame and its controls still
    // have to end.
    void keep(std::shared_ptr<void> reference) { kept = std::move(reference); }

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
    std::shared_ptr<void> kept;
};
