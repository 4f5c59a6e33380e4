// CAnimDriveKnob: the knob of a drive, the same as a gain knob.
#pragma once

#include "editor/controls/CAnimGainKnob.h"

class CAnimDriveKnob : public CAnimGainKnob {
public:
    using CAnimGainKnob::CAnimGainKnob;

    void setValue(float newValue) override { CAnimGainKnob::setValue(newValue); }
    float getValue() const override { return CAnimGainKnob::getValue(); }

    CLASS_METHODS(CAnimDriveKnob, CAnimGainKnob)

protected:
    ~CAnimDriveKnob() override = default;
};
