// CBlinkLEDButton: a button whose brightness can be changed while it is on.
#pragma once

#include "editor/controls/CPoweredButton.h"

class CBlinkLEDButton : public CPoweredButton {
public:
    using CPoweredButton::CPoweredButton;

    // Brightness of the lit frame, clamped to 0..1 when drawn. Does not redraw.
    void setBlinkLevel(float level) { blinkLevel = level; }
    float getBlinkLevel() const { return blinkLevel; }
    // A number for the caller's use.
    void setBlinkMode(int32_t mode) { blinkMode = mode; }
    int32_t getBlinkMode() const { return blinkMode; }

    void draw(VSTGUI::CDrawContext* context) override;

    CLASS_METHODS(CBlinkLEDButton, CPoweredButton)

protected:
    ~CBlinkLEDButton() override = default;

private:
    int32_t blinkMode{0};
    float blinkLevel{1.f};
};
