// A knob and its gestures.
#include "vstgui/lib/controls/cknob.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/cframe.h"

#include <algorithm>
#include <cmath>

namespace VSTGUI {

namespace {

constexpr float kPi = 3.14159265358979f;
constexpr float kDragRange = 200.f;  // pixels for the whole range
constexpr float kFine = 0.1f;

}  // namespace

CKnob::CKnob(const CRect& rect, IControlListener* l, int32_t t, CBitmap* back, CBitmap* handle,
             const CPoint& o, int32_t)
    : CControl(rect, l, t, back), offset(o), pHandle(handle), startAngle(0.75f * kPi),
      rangeAngle(1.5f * kPi)
{
    if (handle)
        inset = std::max(handle->getWidth(), handle->getHeight()) / 2. + 2.5;
    setWantsFocus(true);
}

CKnob::CKnob(const CKnob& other) = default;

CKnob::~CKnob() = default;

void CKnob::setStartAngle(float angle)
{
    startAngle = angle;
    setDirty();
}

void CKnob::setRangeAngle(float angle)
{
    rangeAngle = angle;
    setDirty();
}

void CKnob::setHandleBitmap(CBitmap* bitmap)
{
    pHandle = bitmap;
    setDirty();
}

void CKnob::setColorHandle(const CColor& color)
{
    colorHandle = color;
    setDirty();
}

bool CKnob::sizeToFit()
{
    const CBitmap* bitmap = getDrawBackground();
    if (!bitmap)
        return false;
    CRect rect(getViewSize());
    rect.setSize(CPoint(bitmap->getWidth(), bitmap->getHeight()));
    setViewSize(rect);
    setMouseableArea(rect);
    return true;
}

CPoint CKnob::handlePosition() const
{
    const CPoint centre = getViewSize().getCenter();
    const double angle = startAngle + getValueNormalized() * rangeAngle;
    return {centre.x + (getWidth() / 2. - inset) * std::cos(angle),
            centre.y + (getHeight() / 2. - inset) * std::sin(angle)};
}

void CKnob::draw(CDrawContext* context)
{
    if (CBitmap* bitmap = getDrawBackground())
        bitmap->draw(context, getViewSize(), offset);
    const CPoint tip = handlePosition();
    if (pHandle) {
        const CPoint half(pHandle->getWidth() / 2., pHandle->getHeight() / 2.);
        pHandle->draw(context, CRect(tip - half, half + half));
    } else {
        // A line from the middle to the tip, a pixel at a time.
        const CPoint centre = getViewSize().getCenter();
        const CPoint way = tip - centre;
        const double steps = std::ceil(std::max(std::fabs(way.x), std::fabs(way.y)));
        context->setFillColor(colorHandle);
        for (double i = 0; i <= steps; ++i) {
            const double part = steps > 0 ? i / steps : 0.;
            const CPoint p(std::floor(centre.x + way.x * part),
                           std::floor(centre.y + way.y * part));
            context->drawRect(CRect(p, CPoint(1, 1)), kDrawFilled);
        }
    }
    setDirty(false);
}

bool CKnob::dragsLinearly(const CButtonState& buttons) const
{
    const int32_t mode = getFrame() ? getFrame()->getKnobMode() : kDefaultKnobMode;
    const bool swapped = (buttons & kAlt) != 0;
    return (mode == kLinearMode) != swapped;
}

float CKnob::angleAt(const CPoint& where) const
{
    const CPoint centre = getViewSize().getCenter();
    return static_cast<float>(std::atan2(where.y - centre.y, where.x - centre.x));
}

CMouseEventResult CKnob::onMouseDown(CPoint& where, const CButtonState& buttons)
{
    if (!buttons.isLeftButton())
        return kMouseEventNotHandled;
    beginEdit();
    if (checkDefaultValue(buttons)) {
        endEdit();
        return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
    }
    lastPoint = where;
    entryValue = getValueNormalized();
    return onMouseMoved(where, buttons);
}

CMouseEventResult CKnob::onMouseUp(CPoint&, const CButtonState&)
{
    if (isEditing())
        endEdit();
    return kMouseEventHandled;
}

CMouseEventResult CKnob::onMouseMoved(CPoint& where, const CButtonState& buttons)
{
    if (!isEditing())
        return kMouseEventNotHandled;
    const int32_t mode = getFrame() ? getFrame()->getKnobMode() : kDefaultKnobMode;
    const float fullTurn = 2.f * kPi;
    if (dragsLinearly(buttons)) {
        const CPoint way = where - lastPoint;
        const float fine = (buttons & kZoomModifier) != 0 ? zoomFactor : 1.f;
        entryValue += static_cast<float>(way.x - way.y) / (kDragRange * fine);
    } else if (mode == kRelativCircularMode) {
        const float turned = std::remainder(angleAt(where) - angleAt(lastPoint), fullTurn);
        entryValue += turned / rangeAngle;
    } else {
        // The gap below the range belongs to the nearer end.
        const float middle = startAngle + rangeAngle / 2.f;
        const float fromMiddle = std::remainder(angleAt(where) - middle, fullTurn);
        entryValue = 0.5f + fromMiddle / rangeAngle;
    }
    lastPoint = where;
    setValueNormalized(entryValue);
    if (isDirty()) {
        valueChanged();
        invalid();
    }
    return kMouseEventHandled;
}

void CKnob::moveBy(float notches, bool fine)
{
    setValueNormalized(getValueNormalized() + notches * wheelInc * (fine ? kFine : 1.f));
    notifyIfDirty();
}

bool CKnob::onWheel(const CPoint&, const float& distance, const CButtonState& buttons)
{
    moveBy(distance, (buttons & kZoomModifier) != 0);
    return true;
}

int32_t CKnob::onKeyDown(VstKeyCode& keyCode)
{
    const bool fine = (keyCode.modifier & MODIFIER_SHIFT) != 0;
    switch (keyCode.virt) {
    case VKEY_UP:
    case VKEY_RIGHT:
        moveBy(1.f, fine);
        return 1;
    case VKEY_DOWN:
    case VKEY_LEFT:
        moveBy(-1.f, fine);
        return 1;
    default:
        return -1;
    }
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
