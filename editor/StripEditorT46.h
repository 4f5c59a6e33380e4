// StripEditorT46: the column of a channel's equaliser, primary or secondary.
#pragma once

#include "editor/StripEditor.h"

class CAnimCoaxT46CustomKnob;
class CPoweredButton;
class CPowerLED;

class StripEditorT46 : public StripEditor {
public:
    // `tagBase` is the id of the strip's process switch: kProcL, kProcR, kProcL2 or kProcR2.
    StripEditorT46(VSTGUI::IControlListener* listener, unsigned tagBase);

    bool attach(VSTGUI::CFrame* parent, const VSTGUI::CPoint& origin) override;
    void detach() override;
    void setParameter(int32_t id, double value) override;
    void setPower(int32_t state) override;
    // The LED that shows whether the strip processes; at least 0.5 is lit.
    void setLedState(double value);

private:
    unsigned tagBase;
    CAnimCoaxT46CustomKnob* highBand = nullptr;
    CAnimCoaxT46CustomKnob* midBand = nullptr;
    CAnimCoaxT46CustomKnob* lowBand = nullptr;
    CPoweredButton* lowShelf = nullptr;
    CPoweredButton* highShelf = nullptr;
    CPoweredButton* process = nullptr;
    CPowerLED* led = nullptr;
};
