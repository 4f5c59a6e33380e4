#include "vstgui/lib/controls/crockerswitch.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/cvstguitimer.h"

namespace VSTGUI {

namespace {

constexpr uint32_t kWheelReset = 200;  // ms

}  // namespace

CRockerSwitch::CRockerSwitch(const CRect& size, IControlListener* listener, int32_t tag,
                             CBitmap* background, const CPoint& offset, const int32_t style)
    : CRockerSwitch(size, listener, tag, size.getHeight(), background, offset, style)
{
}

CRockerSwitch::CRockerSwitch(const CRect& size, IControlListener* listener, int32_t tag,
                             CCoord heightOfOneImage, CBitmap* background, const CPoint& offset,
                             const int32_t style)
    : CControl(size, listener, tag, background), IMultiBitmapControl(heightOfOneImage, 3),
      offset(offset), style(style)
{
    setMin(-1.f);
    setMax(1.f);
    setValue(0.f);
    setWantsFocus(true);
}

CRockerSwitch::CRockerSwitch(const CRockerSwitch& other)
    : CControl(other), IMultiBitmapControl(other), offset(other.offset), style(other.style)
{
}

CRockerSwitch::~CRockerSwitch()
{
    stopResetTimer();
}

void CRockerSwitch::draw(CDrawContext* context)
{
    if (CBitmap* bitmap = getDrawBackground()) {
        CCoord down = 0.;
        if (value == (getMax() + getMin()) / 2.f)
            down = heightOfOneImage;
        else if (value == getMax())
            down = 2. * heightOfOneImage;
        bitmap->draw(context, getViewSize(), CPoint(offset.x, offset.y + down));
    }
    setDirty(false);
}

bool CRockerSwitch::onWheel(const CPoint&, const float& distance, const CButtonState&)
{
    value = distance > 0.f ? getMin() : getMax();
    if (isDirty()) {
        invalid();
        if (!isEditing())
            beginEdit();
        valueChanged();
    }
    stopResetTimer();
    resetValueTimer = new CVSTGUITimer(this, kWheelReset, true);
    return true;
}

CMessageResult CRockerSwitch::notify(CBaseObject* sender, IdStringPtr message)
{
    if (message != CVSTGUITimer::kMsgTimer || sender != resetValueTimer)
        return CControl::notify(sender, message);
    const CBaseObjectGuard guard(this);
    stopResetTimer();
    if (value != 0.f) {
        value = 0.f;
        if (!isEditing())
            beginEdit();
        valueChanged();
    }
    if (isEditing())
        endEdit();
    setDirty();
    return kMessageNotified;
}

bool CRockerSwitch::removed(CView* parent)
{
    if (resetValueTimer) {
        // The timer would have ended the wheel's gesture.
        stopResetTimer();
        value = 0.f;
        if (isEditing())
            endEdit();
    }
    return CControl::removed(parent);
}

void CRockerSwitch::stopResetTimer()
{
    if (!resetValueTimer)
        return;
    resetValueTimer->stop();
    resetValueTimer->forget();
    resetValueTimer = nullptr;
}

float CRockerSwitch::sideOfKey(const VstKeyCode& keyCode) const
{
    if (keyCode.modifier != 0)
        return 0.f;
    const bool horizontal = (style & kHorizontal) != 0;
    if (keyCode.virt == (horizontal ? VKEY_LEFT : VKEY_UP))
        return -1.f;
    return keyCode.virt == (horizontal ? VKEY_RIGHT : VKEY_DOWN) ? 1.f : 0.f;
}

int32_t CRockerSwitch::onKeyDown(VstKeyCode& keyCode)
{
    const float side = sideOfKey(keyCode);
    if (side == 0.f)
        return -1;
    if (value != side) {
        value = side;
        invalid();
        if (!isEditing())
            beginEdit();
        valueChanged();
    }
    return 1;
}

int32_t CRockerSwitch::onKeyUp(VstKeyCode& keyCode)
{
    if (sideOfKey(keyCode) == 0.f)
        return -1;
    value = 0.f;
    invalid();
    valueChanged();
    if (isEditing())
        endEdit();
    return 1;
}

}  // namespace VSTGUI
