// CZKRockerSwitch: steps back (left half) or forward (right half) by a press or a notch of the
// wheel. The half under the mouse lights up.
#pragma once

#include "vstgui/lib/controls/cswitch.h"

class CZKRockerSwitch : public VSTGUI::CRockerSwitch {
public:
    // Frames: normal, left half hovered, right half hovered, back, forward.
    CZKRockerSwitch(const VSTGUI::CRect& size, VSTGUI::IControlListener* listener, int32_t tag,
                    VSTGUI::CCoord heightOfOneImage, VSTGUI::CBitmap* background,
                    const VSTGUI::CPoint& offset = VSTGUI::CPoint(0, 0));

    void draw(VSTGUI::CDrawContext* context) override;
    // The listener sees the value 1 for forward and 0 for back. The release does not call it.
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseUp(VSTGUI::CPoint& where,
                                        const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseCancel() override;
    VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint& where,
                                           const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseEntered(VSTGUI::CPoint& where,
                                             const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseExited(VSTGUI::CPoint& where,
                                            const VSTGUI::CButtonState& buttons) override;
    using VSTGUI::CRockerSwitch::onWheel;
    // The listener sees -1 for back (up) and 1 for forward (down). The value returns to 0 without
    // a call 200 ms after the last notch.
    bool onWheel(const VSTGUI::CPoint& where, const float& distance,
                 const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMessageResult notify(VSTGUI::CBaseObject* sender,
                                  VSTGUI::IdStringPtr message) override;

    CLASS_METHODS(CZKRockerSwitch, VSTGUI::CRockerSwitch)

protected:
    ~CZKRockerSwitch() override = default;

private:
    int32_t sideOf(const VSTGUI::CPoint& where) const;
    void setHoverSide(int32_t side);
    void removeRestTimer();
    void comeToRest();

    int32_t hoverSide{0};  // -1 left, 1 right, 0 none
};
