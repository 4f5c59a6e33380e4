// MainPanel: the column at the right end of the window, with the global controls. It pulses the
// brightness of a lit bypass button.
#pragma once

#include "editor/StripEditor.h"

class CBlinkLEDButton;
class CPoweredButton;
class CPoweredResizeButton;
class CPoweredVerticalSwitch;
class CZKKickButton2;
class CZKROnOffButton;

// Tags of the controls that have no parameter of their own.
enum PanelTag : int32_t { kTagInfo = 60, kTagBothBypass = 61 };

class MainPanel : public StripEditor {
public:
    explicit MainPanel(VSTGUI::IControlListener* listener);

    bool attach(VSTGUI::CFrame* parent, const VSTGUI::CPoint& origin) override;
    void detach() override;
    // Also kTagInfo: whether the info panel is shown.
    void setParameter(int32_t id, double value) override;
    void setPower(int32_t state) override;
    // Called every 100 ms: advances the pulse.
    virtual void idle();

    // The control with that tag; null for other tags and while detached.
    VSTGUI::CControl* control(int32_t tag) const;
    // The control's rectangle in the frame; empty for other tags and while detached.
    VSTGUI::CRect controlRect(int32_t tag) const;

private:
    void setBothBypass();

    CZKROnOffButton* power = nullptr;
    VSTGUI::CMovieBitmap* powerLed = nullptr;
    CPoweredVerticalSwitch* channel = nullptr;
    CPoweredButton* midSide = nullptr;
    CPoweredResizeButton* preampModule = nullptr;
    CPoweredButton* link = nullptr;
    CPoweredResizeButton* secondaryModule = nullptr;
    CBlinkLEDButton* bypassRight = nullptr;
    CBlinkLEDButton* bypassLeft = nullptr;
    CPoweredButton* bypassBoth = nullptr;
    CZKKickButton2* info = nullptr;

    float blinkLevel = 1.0f;
    bool blinkRising = true;
    int32_t powerOnShown = 1;
};
