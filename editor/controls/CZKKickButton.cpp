// The press, the release and the look of a momentary button.
#include "editor/controls/CZKKickButton.h"

#include "vstgui/lib/cbitmap.h"

using namespace VSTGUI;

CZKKickButton::CZKKickButton(const CRect& size_, IControlListener* listener_, int32_t tag_,
                             CCoord heightOfOneImage_, CBitmap* background_, bool doubleClickOnly_,
                             const CPoint& offset_)
    : CKickButton(size_, listener_, tag_, heightOfOneImage_, background_, offset_),
      doubleClickOnly(doubleClickOnly_)
{
    setWantsFocus(false);
}

void CZKKickButton::release()
{
    value = 0.f;
    held = false;
    setDirty();
}

void CZKKickButton::drawFrameAt(CDrawContext* context, int32_t frame)
{
    if (CBitmap* bitmap = getDrawBackground())
        bitmap->draw(context, getViewSize(), offset + CPoint(0, getHeightOfOneImage() * frame));
    setDirty(false);
}

void CZKKickButton::draw(CDrawContext* context)
{
    drawFrameAt(context, held ? 2 : hover ? 1 : 0);
}

CMouseEventResult CZKKickButton::onMouseDown(CPoint&, const CButtonState& buttons)
{
    const bool acts = (buttons & kLButton) && (!doubleClickOnly || (buttons & kDoubleClick));
    if (!acts)
        return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
    held = true;
    value = doubleClickOnly && (buttons & kControl) ? 0.5f : 1.f;
    valueChanged();
    setDirty();
    // Released by the listener: the mouse is not to be held for a release that never comes.
    return held ? kMouseEventHandled : kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

CMouseEventResult CZKKickButton::onMouseUp(CPoint&, const CButtonState&)
{
    release();
    return kMouseEventHandled;
}

CMouseEventResult CZKKickButton::onMouseMoved(CPoint&, const CButtonState&)
{
    return held ? kMouseEventHandled : kMouseEventNotHandled;
}

CMouseEventResult CZKKickButton::onMouseCancel()
{
    release();
    return kMouseEventHandled;
}

CMouseEventResult CZKKickButton::onMouseEntered(CPoint&, const CButtonState&)
{
    hover = true;
    setDirty();
    return kMouseEventHandled;
}

CMouseEventResult CZKKickButton::onMouseExited(CPoint&, const CButtonState&)
{
    hover = false;
    setDirty();
    return kMouseEventHandled;
}
