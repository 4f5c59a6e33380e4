// CBlinkLEDButton: a button whose light comes and goes while it is on.
#pragma once

#include "editor/controls/CPoweredButton.h"

class CBlinkLEDButton : public CPoweredButton {
public:
    using CPoweredButton::CPoweredButton;

    // Brightness of the lit frame, 0 to 1; what lies beyond is drawn as the nearer end. Does not
    // redraw.
    void setBlinkLevel(float level) { blinkLevel = level; }
    float getBlinkLevel() const { return blinkLevel; }
    // A number for whoever drives the light to keep with the button.
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
