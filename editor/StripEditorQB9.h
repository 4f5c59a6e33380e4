// StripEditorQB9: the column of a channel's pre-amplifier.
#pragma once

#include "editor/StripEditor.h"

class CAnimDriveKnob;
class CAnimFreqKnob;
class CAnimGainKnob;
class CPoweredButton;

class StripEditorQB9 : public StripEditor {
public:
    // `tagBase` is the id of the channel's drive, kDriveL or kDriveR.
    StripEditorQB9(VSTGUI::IControlListener* listener, unsigned tagBase);

    bool attach(VSTGUI::CFrame* parent, const VSTGUI::CPoint& origin) override;
    void detach() override;
    void setParameter(int32_t id, double value) override;
    void setPower(int32_t state) override;

private:
    unsigned tagBase;
    CAnimDriveKnob* drive = nullptr;
    CAnimGainKnob* output = nullptr;
    CAnimFreqKnob* highPass = nullptr;
    CPoweredButton* boost28k = nullptr;
    CPoweredButton* transformer = nullptr;
    CPoweredButton* amplifier = nullptr;
    CPoweredButton* phase = nullptr;
};
