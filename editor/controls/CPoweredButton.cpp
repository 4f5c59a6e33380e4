#include "editor/controls/CPoweredButton.h"

#include "editor/controls/Filmstrip.h"

using namespace VSTGUI;

CPoweredButton::CPoweredButton(const CRect& size, IControlListener* listener, int32_t tag,
                               CBitmap* background, bool threeFrame, int32_t style)
    : CZKROnOffButton(size, listener, tag, background, style), threeFrame(threeFrame)
{
}

CCoord CPoweredButton::frameTop() const
{
    if (!isOn() || isLocked())
        return 0;
    const CCoord height = frameHeight(getDrawBackground(), threeFrame ? 3 : 2);
    return getPower() ? height : 2 * height;
}

void CPoweredButton::draw(CDrawContext* context)
{
    drawFrame(context, getDrawBackground(), getViewSize(), frameTop());
    setDirty(false);
}

CMouseEventResult CPoweredButton::onMouseDown(CPoint& where, const CButtonState& buttons)
{
    return isLocked() ? kMouseEventHandled : CZKROnOffButton::onMouseDown(where, buttons);
}

bool CPoweredButton::onWheel(const CPoint& where, const float& distance,
                             const CButtonState& buttons)
{
    return isLocked() || CZKROnOffButton::onWheel(where, distance, buttons);
}
