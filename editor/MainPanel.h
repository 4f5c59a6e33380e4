// MainPanel: the column at the right end of the window, with the global controls and the pulse that
// makes a lit bypass button breathe.
#pragma once

#include "editor/StripEditor.h"

class CBlinkLEDButton;
class CPoweredButton;
class CPoweredResizeButton;
class CPoweredVerticalSwitch;
class CZKKickButton2;
class CZKROnOffButton;

// The tags of controls that stand for no single parameter.
enum PanelTag : int32_t { kTagInfo = 60, kTagBothBypass = 61 };

class MainPanel : public StripEditor {
public:
    explicit MainPanel(VSTGUI::IControlListener* listener);

    bool attach(VSTGUI::CFrame* frame, const VSTGUI::CPoint& origin) override;
    void detach() override;
    // Also kTagInfo: whether the info panel is shown.
    void setParameter(int32_t id, double value) override;
    void setPower(int32_t state) override;
    // A tick of 100 ms.
    virtual void idle();

    // The control of that tag; null while detached, and for other tags.
    VSTGUI::CControl* control(int32_t tag) const;
    // Of that control in the frame; empty while detached.
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
