#include "editor/controls/CPoweredVerticalSwitch.h"

using namespace VSTGUI;

void CPoweredVerticalSwitch::draw(CDrawContext* context)
{
    if (getPower())
        CZKRVerticalSwitch::draw(context);
    setDirty(false);
}

CMouseEventResult CPoweredVerticalSwitch::onMouseDown(CPoint& where, const CButtonState& buttons)
{
    return getPower() ? CZKRVerticalSwitch::onMouseDown(where, buttons) : kMouseEventHandled;
}

CMouseEventResult CPoweredVerticalSwitch::onMouseUp(CPoint& where, const CButtonState& buttons)
{
    // A gesture that began with power still ends with the release.
    return getPower() || isEditing() ? CZKRVerticalSwitch::onMouseUp(where, buttons)
                                     : kMouseEventHandled;
}

CMouseEventResult CPoweredVerticalSwitch::onMouseMoved(CPoint& where, const CButtonState& buttons)
{
    return getPower() ? CZKRVerticalSwitch::onMouseMoved(where, buttons) : kMouseEventHandled;
}

bool CPoweredVerticalSwitch::onWheel(const CPoint& where, const float& distance,
                                     const CButtonState& buttons)
{
    return !getPower() || CZKRVerticalSwitch::onWheel(where, distance, buttons);
}
