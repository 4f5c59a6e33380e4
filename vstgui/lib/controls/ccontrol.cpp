#include "vstgui/lib/controls/ccontrol.h"

#include "vstgui/lib/cframe.h"

#include <algorithm>
#include <cassert>

namespace VSTGUI {

int32_t CControl::kZoomModifier = kShift;
int32_t CControl::kDefaultValueModifier = kControl;

CControl::CControl(const CRect& size, IControlListener* listener, int32_t tag, CBitmap* background)
    : CView(size), listener(listener), tag(tag)
{
    CView::setBackground(background);
}

CControl::CControl(const CControl& other)
    : CView(other), listener(other.listener), tag(other.tag), oldValue(other.oldValue),
      defaultValue(other.defaultValue), value(other.value), vmin(other.vmin), vmax(other.vmax),
      wheelInc(other.wheelInc), backOffset(other.backOffset)
{
}

void CControl::setValue(float newValue)
{
    value = std::max(std::min(newValue, getMax()), getMin());
}

void CControl::setValueNormalized(float normalized)
{
    setValue((getMax() - getMin()) * std::clamp(normalized, 0.f, 1.f) + getMin());
}

float CControl::getValueNormalized() const
{
    const float range = getMax() - getMin();
    return range == 0.f ? 0.f : (value - getMin()) / range;
}

void CControl::setMin(float newMin)
{
    vmin = newMin;
    bounceValue();
}

void CControl::setMax(float newMax)
{
    vmax = newMax;
    bounceValue();
}

void CControl::bounceValue()
{
    value = std::max(std::min(value, getMax()), getMin());
}

void CControl::valueChanged()
{
    if (listener)
        listener->valueChanged(this);
}

void CControl::beginEdit()
{
    if (++editing != 1)
        return;
    if (listener)
        listener->controlBeginEdit(this);
    if (getFrame())
        getFrame()->beginEdit(tag);
}

void CControl::endEdit()
{
    assert(editing > 0);
    if (editing == 0 || --editing != 0)
        return;
    if (getFrame())
        getFrame()->endEdit(tag);
    if (listener)
        listener->controlEndEdit(this);
}

void CControl::setTag(int32_t newTag)
{
    if (listener)
        listener->controlTagWillChange(this);
    tag = newTag;
    if (listener)
        listener->controlTagDidChange(this);
}

bool CControl::checkDefaultValue(CButtonState buttons)
{
    if (!buttons.isLeftButton() || buttons.getModifierState() != kDefaultValueModifier)
        return false;
    const float target = getDefaultValue();
    if (target != getValue()) {
        beginEdit();
        setValue(target);
        valueChanged();
        endEdit();
    }
    return true;
}

bool CControl::isDirty() const
{
    return getOldValue() != value || CView::isDirty();
}

void CControl::setDirty(bool state)
{
    CView::setDirty(state);
    if (!state)
        setOldValue(value);
    else
        setOldValue(value == -1.f ? 0.f : -1.f);
}

void CControl::notifyIfDirty()
{
    if (!isDirty())
        return;
    invalid();
    beginEdit();
    valueChanged();
    endEdit();
}

}  // namespace VSTGUI
