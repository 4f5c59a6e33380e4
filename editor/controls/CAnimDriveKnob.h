// CAnimDriveKnob: the knob of a drive, the same as a gain knob.
#pragma once

#include "editor/controls/CAnimGainKnob.h"

class CAnimDriveKnob : public CAnimGainKnob {
public:
    using CAnimGainKnob::CAnimGainKnob;

    CLASS_METHODS(CAnimDriveKnob, CAnimGainKnob)

protected:
    ~CAnimDriveKnob() override = default;
};
