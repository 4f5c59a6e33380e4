#include "vstgui/lib/controls/ckickbutton.h"

#include "vstgui/lib/cdrawcontext.h"

namespace VSTGUI {

CKickButton::CKickButton(const CRect& size, IControlListener* listener, int32_t tag,
                         CBitmap* background, const CPoint& offset)
    : CKickButton(size, listener, tag, size.getHeight(), background, offset)
{
}

CKickButton::CKickButton(const CRect& size, IControlListener* listener, int32_t tag,
                         CCoord heightOfOneImage, CBitmap* background, const CPoint& offset)
    : CControl(size, listener, tag, background),
      IMultiBitmapControl(heightOfOneImage, countFrames(background, heightOfOneImage)),
      offset(offset)
{
    setWantsFocus(true);
}

void CKickButton::draw(CDrawContext* context)
{
    bounceValue();
    if (CBitmap* bitmap = getDrawBackground()) {
        const CCoord down = value == getMax() ? heightOfOneImage : 0.;
        bitmap->draw(context, getViewSize(), CPoint(offset.x, offset.y + down));
    }
    setDirty(false);
}

CMouseEventResult CKickButton::onMouseMoved(CPoint& where, const CButtonState&)
{
    if (!isEditing())
        return kMouseEventNotHandled;
    const CRect& r = getViewSize();
    // The right and bottom edges count as inside here.
    const bool inside =
        where.x >= r.left && where.x <= r.right && where.y >= r.top && where.y <= r.bottom;
    value = inside ? getMax() : getMin();
    if (isDirty())
        invalid();
    return kMouseEventHandled;
}

CMouseEventResult CKickButton::onMouseUp(CPoint&, const CButtonState&)
{
    if (value > 0.f)
        valueChanged();
    value = getMin();
    valueChanged();
    if (isDirty())
        invalid();
    if (isEditing())
        endEdit();
    return kMouseEventHandled;
}

int32_t CKickButton::onKeyDown(VstKeyCode& keyCode)
{
    if (keyCode.modifier != 0 || keyCode.virt != VKEY_RETURN)
        return -1;
    if (value != getMax()) {
        beginEdit();
        value = getMax();
        invalid();
        valueChanged();
    }
    return 1;
}

int32_t CKickButton::onKeyUp(VstKeyCode& keyCode)
{
    if (keyCode.modifier != 0 || keyCode.virt != VKEY_RETURN)
        return -1;
    value = getMin();
    invalid();
    valueChanged();
    if (isEditing())
        endEdit();
    return 1;
}

}  // namespace VSTGUI
