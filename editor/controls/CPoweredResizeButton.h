// CPoweredResizeButton: a button that changes the window's size. It takes no wheel, so that a stray
// turn over it cannot do that.
#pragma once

#include "editor/controls/CPoweredButton.h"

class CPoweredResizeButton : public CPoweredButton {
public:
    using CPoweredButton::CPoweredButton;

    using CPoweredButton::onWheel;
    bool onWheel(const VSTGUI::CPoint& where, const float& distance,
                 const VSTGUI::CButtonState& buttons) override;

    CLASS_METHODS(CPoweredResizeButton, CPoweredButton)

protected:
    ~CPoweredResizeButton() override = default;
};
