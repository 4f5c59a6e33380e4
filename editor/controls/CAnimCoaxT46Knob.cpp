#include "editor/controls/CAnimCoaxT46Knob.h"

#include "editor/controls/Filmstrip.h"
#include "editor/controls/PressGuard.h"
#include "params/lookup/Truncate.h"

#include <algorithm>
#include <cmath>

using namespace VSTGUI;

CAnimCoaxT46Knob::CAnimCoaxT46Knob(const CRect& size, IControlListener* listener, int32_t tag,
                                   int32_t frames, int32_t frameHeight, CBitmap* bitmap,
                                   const CPoint& offset, CCoord inset)
    : CAnimCoaxT46Knob(size, listener, tag, frames, frameHeight, bitmap, offset, inset, inset,
                       inset, inset)
{
}

CAnimCoaxT46Knob::CAnimCoaxT46Knob(const CRect& size, IControlListener* listener, int32_t tag,
                                   int32_t frames, int32_t frameHeight, CBitmap* bitmap,
                                   const CPoint& offset, CCoord leftInset, CCoord topInset,
                                   CCoord rightInset, CCoord bottomInset)
    : CKnob(size, listener, tag, bitmap, nullptr, offset),
      imageRect(size.left + leftInset, size.top + topInset, size.right - rightInset,
                size.bottom - bottomInset),
      centre(imageRect.getCenter()), innerRadius(static_cast<float>(centre.x - imageRect.left)),
      innerFrames(frames), innerFrameHeight(frameHeight)
{
    setWantsFocus(false);
}

void CAnimCoaxT46Knob::setCentre(const CPoint& point, float radius)
{
    centre = point;
    innerRadius = radius;
}

void CAnimCoaxT46Knob::setInnerRadius(float radius)
{
    innerRadius = radius;
}

void CAnimCoaxT46Knob::bounceValue2()
{
    value2 = std::min(std::max(value2, min2), max2);
}

void CAnimCoaxT46Knob::setDragRange(float range)
{
    dragRange = range;
}

void CAnimCoaxT46Knob::setDragRange2(float range)
{
    dragRange2 = range;
}

void CAnimCoaxT46Knob::setFineFactor(float factor)
{
    fineFactor = factor;
}

void CAnimCoaxT46Knob::setFineFactor2(float factor)
{
    fineFactor2 = factor;
}

void CAnimCoaxT46Knob::setValue2(float newValue)
{
    value2 = newValue;
}

float CAnimCoaxT46Knob::getValue2() const
{
    return value2;
}

void CAnimCoaxT46Knob::setMin2(float newMin)
{
    min2 = newMin;
}

float CAnimCoaxT46Knob::getMin2() const
{
    return min2;
}

void CAnimCoaxT46Knob::setMax2(float newMax)
{
    max2 = newMax;
}

float CAnimCoaxT46Knob::getMax2() const
{
    return max2;
}

void CAnimCoaxT46Knob::setDefaultValue2(float newDefault)
{
    defaultValue2 = newDefault;
}

float CAnimCoaxT46Knob::getDefaultValue2() const
{
    return defaultValue2;
}

void CAnimCoaxT46Knob::setOuterBitmap(CBitmap* bitmap, int32_t frames)
{
    outerBitmap = bitmap;
    outerFrames = frames;
}

void CAnimCoaxT46Knob::setValue(float newValue)
{
    setOldValue(value);
    value = newValue;
    setDirty();
}

// The inner picture has transparent parts, so the ring goes below it.
void CAnimCoaxT46Knob::draw(CDrawContext* context)
{
    drawOuter(context, stepOf(value2, outerFrames));
    drawInner(context);
    setDirty(false);
}

void CAnimCoaxT46Knob::drawOuter(CDrawContext* context, int32_t frame) const
{
    drawFrame(context, outerBitmap, imageRect, frame * frameHeight(outerBitmap, outerFrames));
}

void CAnimCoaxT46Knob::drawInner(CDrawContext* context) const
{
    drawFrame(context, getDrawBackground(), imageRect,
              stepOf(value, innerFrames) * innerFrameHeight);
}

void CAnimCoaxT46Knob::drawOverlay(CDrawContext* context, CBitmap* overlay, CRect part) const
{
    if (!overlay)
        return;
    const CPoint origin = part.getTopLeft();
    overlay->draw(context, part.offset(getViewSize().getTopLeft()), origin);
}

bool CAnimCoaxT46Knob::isOnRing(const CPoint& where) const
{
    const float x = static_cast<float>(where.x - centre.x);
    const float y = static_cast<float>(where.y - centre.y);
    return std::sqrt(x * x + y * y) > innerRadius;
}

CButtonState CAnimCoaxT46Knob::takeControl(const CButtonState& buttons)
{
    ctrlHeld = (buttons & kControl) != 0;
    return buttons & ~kControl;
}

void CAnimCoaxT46Knob::notifyAtOnce()
{
    setDirty();
    if (!getListener())
        return;
    beginEdit();
    valueChanged();
    endEdit();
}

CMouseEventResult CAnimCoaxT46Knob::onMouseDown(CPoint& where, const CButtonState& buttons)
{
    if (!(buttons & kLButton))
        return kMouseEventNotHandled;
    const bool onRing = isOnRing(where);
    if (buttons & (kControl | kDoubleClick)) {
        // ringIsOuter stays that of the gesture before, on purpose.
        if (onRing) {
            value2 = defaultValue2;
            bounceValue2();
        } else {
            value = getDefaultValue();
        }
        notifyAtOnce();
        return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
    }
    ringIsOuter = onRing;
    entryValue = onRing ? value2 : value;
    coefficient = dragCoefficient(onRing ? max2 - min2 : getMax() - getMin(), buttons);
    lastButtons = buttons;
    pressPoint = lastPoint = accumulatedPoint = where;
    const PressGuard guard(*this);
    if (!isEditing())
        beginEdit();
    return drag(where, buttons);
}

CMouseEventResult CAnimCoaxT46Knob::onMouseMoved(CPoint& where, const CButtonState& buttons)
{
    return drag(where, buttons);
}

CMouseEventResult CAnimCoaxT46Knob::onMouseCancel()
{
    if (isEditing())
        endEdit();
    return kMouseEventHandled;
}

float CAnimCoaxT46Knob::dragCoefficient(float range, const CButtonState& buttons) const
{
    float result = range * (ringIsOuter ? dragRange2 : dragRange);
    if (buttons & kShift)
        result *= ringIsOuter ? fineFactor2 : fineFactor;
    return result;
}

CMouseEventResult CAnimCoaxT46Knob::drag(const CPoint& where, const CButtonState& buttons)
{
    if (!(buttons & kLButton)) {
        // The button was released outside the window, without an event.
        if (isEditing())
            endEdit();
        return kMouseEventNotHandled;
    }
    // The listener is told before and after the move: it takes the old value from the first call.
    valueChanged();

    // A pixel up counts as two to the right. The sum is kept in x.
    const double way = (lastPoint.y - where.y) * 2. + (where.x - lastPoint.x);
    accumulatedPoint.x += double{static_cast<float>(way)};
    lastPoint = where;
    const int diff =
        truncate((pressPoint.y - accumulatedPoint.y) + (accumulatedPoint.x - pressPoint.x) * 0.5);
    if (buttons != lastButtons) {
        // Shift was pressed or released: the value is kept and continues with the new step per
        // pixel. The range is the inner knob's for both rings.
        const float before = coefficient;
        coefficient = dragCoefficient(getMax() - getMin(), buttons);
        entryValue += static_cast<float>(diff) * (before - coefficient);
        lastButtons = buttons;
    }
    const float dragged = entryValue + static_cast<float>(diff) * coefficient;
    if (ringIsOuter) {
        value2 = dragged;
        bounceValue2();
    } else {
        value = dragged;
        bounceValue();
    }
    setDirty();
    valueChanged();
    return kMouseEventHandled;
}

bool CAnimCoaxT46Knob::onWheel(const CPoint& where, const float& distance,
                               const CButtonState& buttons)
{
    const float direction = distance > 0.1f ? 1.f : distance < -0.1f ? -1.f : distance;
    const bool fine = (buttons & kShift) != 0;
    ringIsOuter = isOnRing(where);
    if (ringIsOuter) {
        value2 += wheelStep2 * direction * (fine ? wheelFine2 : 1.f);
        bounceValue2();
    } else {
        value = turned(wheelStep * direction * (fine ? wheelFine : 1.f));
        bounceValue();
    }
    notifyAtOnce();
    return true;
}
