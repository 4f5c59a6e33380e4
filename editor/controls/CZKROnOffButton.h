// CZKROnOffButton: a latching button with two frames, off and on, that works with or without power.
#pragma once

#include "vstgui/lib/controls/ccontrol.h"

class CZKROnOffButton : public VSTGUI::CControl {
public:
    // Without a bitmap it is an invisible area that takes clicks. The style is kept for whoever
    // wants to tell such buttons apart.
    CZKROnOffButton(const VSTGUI::CRect& size, VSTGUI::IControlListener* listener, int32_t tag,
                    VSTGUI::CBitmap* background, int32_t style = 0);

    // Latching: one direction of the wheel turns on, the other off. Otherwise every turn toggles.
    void setWheelLatching(bool state) { wheelLatching = state; }
    // Which direction turns a latching button on: upwards when inverted, else downwards.
    void setWheelInverted(bool state) { wheelInverted = state; }
    int32_t getStyle() const { return style; }

    void draw(VSTGUI::CDrawContext* context) override;
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    // The press is the whole gesture.
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

    // As it is drawn: from 0.5 upwards.
    bool isOn() const { return value >= 0.5f; }

private:
    bool wheelLatching{false};
    bool wheelInverted{false};
    int32_t style;
};
