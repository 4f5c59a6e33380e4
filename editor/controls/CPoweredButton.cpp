// How power changes the look and the use of a button.
#include "editor/controls/CPoweredButton.h"

#include "editor/controls/Filmstrip.h"

using namespace VSTGUI;

CPoweredButton::CPoweredButton(const CRect& size_, IControlListener* listener_, int32_t tag_,
                               CBitmap* background_, bool threeFrame_, int32_t style_)
    : CZKROnOffButton(size_, listener_, tag_, background_, style_), threeFrame(threeFrame_)
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
