#include "vstgui/lib/controls/cknob.h"

#include "vstgui/lib/cdrawcontext.h"

namespace VSTGUI {

namespace {

constexpr float kFine = 0.1f;

}  // namespace

CKnob::CKnob(const CRect& size, IControlListener* listener, int32_t tag, CBitmap* background,
             CBitmap* /*handle*/, const CPoint& offset, int32_t /*drawStyle*/)
    : CControl(size, listener, tag, background), offset(offset)
{
    setWantsFocus(true);
}

void CKnob::draw(CDrawContext* context)
{
    if (CBitmap* bitmap = getDrawBackground())
        bitmap->draw(context, getViewSize(), offset);
    setDirty(false);
}

CMouseEventResult CKnob::onMouseUp(CPoint&, const CButtonState&)
{
    if (isEditing())
        endEdit();
    return kMouseEventHandled;
}

int32_t CKnob::onKeyDown(VstKeyCode& keyCode)
{
    const bool up = keyCode.virt == VKEY_UP || keyCode.virt == VKEY_RIGHT;
    if (!up && keyCode.virt != VKEY_DOWN && keyCode.virt != VKEY_LEFT)
        return -1;
    const float fine = (keyCode.modifier & MODIFIER_SHIFT) != 0 ? kFine : 1.f;
    setValueNormalized(getValueNormalized() + (up ? wheelInc : -wheelInc) * fine);
    notifyIfDirty();
    return 1;
}

void CKnob::setMin(float newMin)
{
    CControl::setMin(newMin);
    setDirty();
}

void CKnob::setMax(float newMax)
{
    CControl::setMax(newMax);
    setDirty();
}

void CKnob::setViewSize(const CRect& rect, bool doInvalid)
{
    CControl::setViewSize(rect, doInvalid);
    setDirty();
}

}  // namespace VSTGUI
