// CPoweredResizeButton: a button that changes the window's size. It ignores the wheel, so that
// scrolling over it by accident does not resize the window.
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
