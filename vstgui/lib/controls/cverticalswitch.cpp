#include "vstgui/lib/controls/cverticalswitch.h"

#include "vstgui/lib/cdrawcontext.h"

namespace VSTGUI {

CVerticalSwitch::CVerticalSwitch(const CRect& size, IControlListener* listener, int32_t tag,
                                 CBitmap* background, const CPoint& offset)
    : CVerticalSwitch(size, listener, tag, countFrames(background, size.getHeight()),
                      size.getHeight(), 0, background, offset)
{
}

CVerticalSwitch::CVerticalSwitch(const CRect& size, IControlListener* listener, int32_t tag,
                                 int32_t subPixmaps, CCoord heightOfOneImage,
                                 int32_t /*maxPositions*/, CBitmap* background,
                                 const CPoint& offset)
    : CControl(size, listener, tag, background), IMultiBitmapControl(heightOfOneImage, subPixmaps),
      offset(offset)
{
    setDefaultValue(0.f);
    setWantsFocus(true);
}

void CVerticalSwitch::draw(CDrawContext* context)
{
    if (CBitmap* bitmap = getDrawBackground())
        bitmap->draw(context, getViewSize(),
                     CPoint(0, heightOfOneImage * frameAt(getValueNormalized())));
    setDirty(false);
}

CMouseEventResult CVerticalSwitch::onMouseDown(CPoint& where, const CButtonState& buttons)
{
    if (!(buttons & kLButton))
        return kMouseEventNotHandled;
    positionHeight = subPixmaps > 0 ? heightOfOneImage / subPixmaps : 0.;
    beginEdit();
    if (checkDefaultValue(buttons)) {
        endEdit();
        return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
    }
    return onMouseMoved(where, buttons);
}

CMouseEventResult CVerticalSwitch::onMouseUp(CPoint&, const CButtonState&)
{
    if (isEditing())
        endEdit();
    return kMouseEventHandled;
}

CMouseEventResult CVerticalSwitch::onMouseMoved(CPoint& where, const CButtonState&)
{
    if (!isEditing() || positionHeight <= 0. || subPixmaps < 2)
        return kMouseEventHandled;
    const auto position = static_cast<int32_t>((where.y - getViewSize().top) / positionHeight);
    setValueNormalized(static_cast<float>(position) / static_cast<float>(subPixmaps - 1));
    if (isDirty()) {
        valueChanged();
        invalid();
    }
    return kMouseEventHandled;
}

int32_t CVerticalSwitch::onKeyDown(VstKeyCode& keyCode)
{
    const bool up = keyCode.virt == VKEY_UP;
    if (keyCode.modifier != 0 || (!up && keyCode.virt != VKEY_DOWN) || subPixmaps < 2)
        return -1;
    const float before = value;
    const int32_t position = frameAt(getValueNormalized()) + (up ? -1 : 1);
    setValueNormalized(static_cast<float>(position) / static_cast<float>(subPixmaps - 1));
    if (value == before)
        return -1;
    notifyIfDirty();
    return 1;
}

}  // namespace VSTGUI
