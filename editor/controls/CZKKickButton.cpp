#include "editor/controls/CZKKickButton.h"

#include "vstgui/lib/cbitmap.h"

using namespace VSTGUI;

CZKKickButton::CZKKickButton(const CRect& size, IControlListener* listener, int32_t tag,
                             CCoord heightOfOneImage, CBitmap* background, bool doubleClickOnly,
                             const CPoint& offset)
    : CKickButton(size, listener, tag, heightOfOneImage, background, offset),
      doubleClickOnly(doubleClickOnly)
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
    // After a release by the listener, the frame must not wait for one.
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
