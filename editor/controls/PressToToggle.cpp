#include "editor/controls/PressToToggle.h"

#include "params/lookup/Truncate.h"

using namespace VSTGUI;

void toggle(CControl& control)
{
    control.setValue(truncate(double{control.getValue()} + 0.5) == 0 ? 1.f : 0.f);
}

CMouseEventResult pressToToggle(CControl& control, const CButtonState& buttons)
{
    if (!(buttons & kLButton))
        return kMouseEventNotHandled;
    toggle(control);
    control.beginEdit();
    control.valueChanged();
    control.endEdit();
    control.setDirty();
    return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}
