// PressGuard: for a press that begins a gesture which the release is to end. Where the listener
// removes the control meanwhile, there will be no release, and the gesture ends with the press.
#pragma once

#include "vstgui/lib/controls/ccontrol.h"

class PressGuard {
public:
    explicit PressGuard(VSTGUI::CControl& pressed)
        : control(pressed), alive(&pressed), wasAttached(pressed.isAttached())
    {
    }
    ~PressGuard()
    {
        if (wasAttached && !control.isAttached() && control.isEditing())
            control.endEdit();
    }
    PressGuard(const PressGuard&) = delete;
    PressGuard& operator=(const PressGuard&) = delete;

private:
    VSTGUI::CControl& control;
    VSTGUI::CBaseObjectGuard alive;
    bool wasAttached;
};
