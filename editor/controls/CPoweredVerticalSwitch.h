// CPoweredVerticalSwitch: a vertical switch that is hidden and locked without power.
#pragma once

#include "editor/controls/CPoweredControl.h"
#include "editor/controls/CZKRVerticalSwitch.h"

class CPoweredVerticalSwitch : public CZKRVerticalSwitch, public CPoweredControl {
public:
    using CZKRVerticalSwitch::CZKRVerticalSwitch;

    void draw(VSTGUI::CDrawContext* context) override;
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseUp(VSTGUI::CPoint& where,
                                        const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint& where,
                                           const VSTGUI::CButtonState& buttons) override;
    using CZKRVerticalSwitch::onWheel;
    bool onWheel(const VSTGUI::CPoint& where, const float& distance,
                 const VSTGUI::CButtonState& buttons) override;

    CLASS_METHODS(CPoweredVerticalSwitch, CZKRVerticalSwitch)

protected:
    ~CPoweredVerticalSwitch() override = default;
};
