// PressGuard: ends a control's gesture if its listener removes the control during the press, since
// the control then gets no release.
#pragma once

#include "vstgui/lib/controls/ccontrol.h"

class PressGuard {
public:
    explicit PressGuard(VSTGUI::CControl& control)
        : control(control), alive(&control), wasAttached(control.isAttached())
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
