// IControlListener: hears what a control's user does.
#pragma once

#include "vstgui/lib/cbuttonstate.h"

namespace VSTGUI {

class CControl;

class IControlListener {
public:
    virtual ~IControlListener() = default;

    virtual void valueChanged(CControl* control) = 0;
    // Asked before a press with a modifier or the right button; non-zero ends that press.
    virtual int32_t controlModifierClicked(CControl*, CButtonState) { return 0; }
    virtual void controlBeginEdit(CControl*) { }
    virtual void controlEndEdit(CControl*) { }
    virtual void controlTagWillChange(CControl*) { }
    virtual void controlTagDidChange(CControl*) { }
};

}  // namespace VSTGUI
