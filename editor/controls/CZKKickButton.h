// CZKKickButton: a momentary button that acts on the press, or on a double click only, and lights
// up under the mouse.
#pragma once

#include "vstgui/lib/controls/cbuttons.h"

class CZKKickButton : public VSTGUI::CKickButton {
public:
    // Frames: normal, hovered, held.
    CZKKickButton(const VSTGUI::CRect& size, VSTGUI::IControlListener* listener, int32_t tag,
                  VSTGUI::CCoord heightOfOneImage, VSTGUI::CBitmap* background,
                  bool doubleClickOnly = false,
                  const VSTGUI::CPoint& offset = VSTGUI::CPoint(0, 0));

    // As if the mouse button had been released. For a listener that opens another window, which
    // then gets the release.
    void release();
    bool isHeld() const { return held; }

    void draw(VSTGUI::CDrawContext* context) override;
    // The listener sees the value 1; with doubleClickOnly and Control held, 0.5.
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

    CLASS_METHODS(CZKKickButton, VSTGUI::CKickButton)

protected:
    ~CZKKickButton() override = default;

    bool isHovered() const { return hover; }
    void drawFrameAt(VSTGUI::CDrawContext* context, int32_t frame);

private:
    bool hover{false};
    bool doubleClickOnly;
    bool held{false};
};
