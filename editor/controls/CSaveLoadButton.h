// CSaveLoadButton: opens a file dialog; the listener can tell the right mouse button from the left.
#pragma once

#include "vstgui/lib/controls/cbuttons.h"

class CSaveLoadButton : public VSTGUI::CKickButton {
public:
    // Frames: at rest, hovered, at work.
    CSaveLoadButton(const VSTGUI::CRect& size, VSTGUI::IControlListener* listener, int32_t tag,
                    VSTGUI::CCoord heightOfOneImage, VSTGUI::CBitmap* background,
                    const VSTGUI::CPoint& offset = VSTGUI::CPoint(0, 0));

    void draw(VSTGUI::CDrawContext* context) override;
    // The listener hears of 0.5 for the right button without anything else, of 1 otherwise. The
    // value is back at 0 when it returns.
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseEntered(VSTGUI::CPoint& where,
                                             const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseExited(VSTGUI::CPoint& where,
                                            const VSTGUI::CButtonState& buttons) override;

    CLASS_METHODS(CSaveLoadButton, VSTGUI::CKickButton)

protected:
    ~CSaveLoadButton() override = default;

private:
    bool hover{false};
};
