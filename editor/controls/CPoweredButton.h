// CPoweredButton: a latching button whose picture depends on the power state.
#pragma once

#include "editor/controls/CPoweredControl.h"
#include "editor/controls/CZKROnOffButton.h"

class CPoweredButton : public CZKROnOffButton, public CPoweredControl {
public:
    // With three frames (off, on, on without power) it also works without power. With two frames
    // it is drawn off and ignores the mouse while there is no power; its value is kept.
    CPoweredButton(const VSTGUI::CRect& size, VSTGUI::IControlListener* listener, int32_t tag,
                   VSTGUI::CBitmap* background, bool threeFrame, int32_t style = 0);

    void draw(VSTGUI::CDrawContext* context) override;
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    using CZKROnOffButton::onWheel;
    bool onWheel(const VSTGUI::CPoint& where, const float& distance,
                 const VSTGUI::CButtonState& buttons) override;

    CLASS_METHODS(CPoweredButton, CZKROnOffButton)

protected:
    ~CPoweredButton() override = default;

    // The top of the frame for the value and power, in pixels from the bitmap's top.
    VSTGUI::CCoord frameTop() const;

private:
    bool isLocked() const { return !getPower() && !threeFrame; }

    bool threeFrame;
};
