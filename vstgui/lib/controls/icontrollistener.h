// IControlListener: is told of what the user does with a control.
#pragma once

#include "vstgui/lib/cbuttonstate.h"

namespace VSTGUI {

class CControl;

class IControlListener {
public:
    virtual ~IControlListener() = default;

    virtual void valueChanged(CControl* control) = 0;
    // Called before a press with a modifier or the right button. Non-zero: the press is handled.
    virtual int32_t controlModifierClicked(CControl*, CButtonState) { return 0; }
    virtual void controlBeginEdit(CControl*) { }
    virtual void controlEndEdit(CControl*) { }
    virtual void controlTagWillChange(CControl*) { }
    virtual void controlTagDidChange(CControl*) { }
};

}  // namespace VSTGUI
