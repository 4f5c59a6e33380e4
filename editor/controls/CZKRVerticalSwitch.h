// CZKRVerticalSwitch: a vertical switch that also takes the wheel.
#pragma once

#include "vstgui/lib/controls/cswitch.h"

class CZKRVerticalSwitch : public VSTGUI::CVerticalSwitch {
public:
    CZKRVerticalSwitch(const VSTGUI::CRect& size, VSTGUI::IControlListener* listener, int32_t tag,
                       int32_t subPixmaps, VSTGUI::CCoord heightOfOneImage, int32_t maxPositions,
                       VSTGUI::CBitmap* background,
                       const VSTGUI::CPoint& offset = VSTGUI::CPoint(0, 0));

    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    using VSTGUI::CVerticalSwitch::onWheel;
    // One notch is one position; up is towards the value 0.
    bool onWheel(const VSTGUI::CPoint& where, const float& distance,
                 const VSTGUI::CButtonState& buttons) override;

    CLASS_METHODS(CZKRVerticalSwitch, VSTGUI::CVerticalSwitch)

protected:
    ~CZKRVerticalSwitch() override = default;
};
