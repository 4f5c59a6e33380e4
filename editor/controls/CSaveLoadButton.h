// CSaveLoadButton: a button for a file dialog; its value tells the listener which mouse button was
// pressed.
#pragma once

#include "vstgui/lib/controls/cbuttons.h"

class CSaveLoadButton : public VSTGUI::CKickButton {
public:
    // Frames: normal, hovered, pressed (while the listener runs).
    CSaveLoadButton(const VSTGUI::CRect& size, VSTGUI::IControlListener* listener, int32_t tag,
                    VSTGUI::CCoord heightOfOneImage, VSTGUI::CBitmap* background,
                    const VSTGUI::CPoint& offset = VSTGUI::CPoint(0, 0));

    void draw(VSTGUI::CDrawContext* context) override;
    // The value is 0.5 for the right button alone, else 1, while the listener is called; then 0.
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
