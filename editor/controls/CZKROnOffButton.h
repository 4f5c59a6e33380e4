// CZKROnOffButton: a latching button with two frames, off and on. The power state has no effect.
#pragma once

#include "vstgui/lib/controls/ccontrol.h"

class CZKROnOffButton : public VSTGUI::CControl {
public:
    // Without a bitmap it is invisible but can be clicked. The style is a number for the caller's
    // use.
    CZKROnOffButton(const VSTGUI::CRect& size, VSTGUI::IControlListener* listener, int32_t tag,
                    VSTGUI::CBitmap* background, int32_t style = 0);

    // Latching: one direction of the wheel turns on, the other off. Otherwise every turn toggles.
    void setWheelLatching(bool state) { wheelLatching = state; }
    // The direction that turns a latching button on: up when inverted, else down.
    void setWheelInverted(bool state) { wheelInverted = state; }
    int32_t getStyle() const { return style; }

    void draw(VSTGUI::CDrawContext* context) override;
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    // The press is the whole gesture; nothing happens on release.
    VSTGUI::CMouseEventResult onMouseUp(VSTGUI::CPoint&, const VSTGUI::CButtonState&) override
    {
        return VSTGUI::kMouseEventNotImplemented;
    }
    VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint&, const VSTGUI::CButtonState&) override
    {
        return VSTGUI::kMouseEventNotImplemented;
    }
    using VSTGUI::CControl::onWheel;
    bool onWheel(const VSTGUI::CPoint& where, const float& distance,
                 const VSTGUI::CButtonState& buttons) override;

    CLASS_METHODS(CZKROnOffButton, VSTGUI::CControl)

protected:
    ~CZKROnOffButton() override = default;

    // Whether it is drawn as on.
    bool isOn() const { return value >= 0.5f; }

private:
    bool wheelLatching{false};
    bool wheelInverted{false};
    int32_t style;
};
