#include "editor/controls/CZKRockerSwitch.h"

#include "editor/controls/PressGuard.h"

#include "vstgui/lib/cbitmap.h"
#include "vstgui/lib/cvstguitimer.h"

#include <utility>

using namespace VSTGUI;

namespace {

constexpr uint32_t kRestAfterMs = 200;

}  // namespace

CZKRockerSwitch::CZKRockerSwitch(const CRect& size, IControlListener* listener, int32_t tag,
                                 CCoord heightOfOneImage, CBitmap* background, const CPoint& offset)
    : CRockerSwitch(size, listener, tag, heightOfOneImage, background, offset)
{
    setWantsFocus(false);
}

void CZKRockerSwitch::draw(CDrawContext* context)
{
    int32_t frame = 0;
    if (hoverSide != 0)
        frame = hoverSide < 0 ? 1 : 2;
    if (value == -1.f)
        frame = 3;
    else if (value == 1.f)
        frame = 4;
    if (CBitmap* bitmap = getDrawBackground())
        bitmap->draw(context, getViewSize(), offset + CPoint(0, getHeightOfOneImage() * frame));
    setDirty(false);
}

int32_t CZKRockerSwitch::sideOf(const CPoint& where) const
{
    return where.x >= getViewSize().getCenter().x ? 1 : -1;
}

void CZKRockerSwitch::setHoverSide(int32_t side)
{
    hoverSide = side;
    setDirty();
}

void CZKRockerSwitch::removeRestTimer()
{
    if (!resetValueTimer)
        return;
    resetValueTimer->stop();
    std::exchange(resetValueTimer, nullptr)->forget();
}

void CZKRockerSwitch::comeToRest()
{
    removeRestTimer();
    value = 0.f;
    setDirty();
}

CMouseEventResult CZKRockerSwitch::onMouseDown(CPoint& where, const CButtonState& buttons)
{
    if (!(buttons & kLButton))
        return kMouseEventNotHandled;
    const PressGuard guard(*this);
    comeToRest();
    if (!isEditing())
        beginEdit();
    value = sideOf(where) > 0 ? 1.f : 0.f;
    valueChanged();
    setDirty();
    return kMouseEventHandled;
}

CMouseEventResult CZKRockerSwitch::onMouseUp(CPoint&, const CButtonState&)
{
    return onMouseCancel();
}

CMouseEventResult CZKRockerSwitch::onMouseCancel()
{
    comeToRest();
    if (isEditing())
        endEdit();
    return kMouseEventHandled;
}

CMouseEventResult CZKRockerSwitch::onMouseMoved(CPoint& where, const CButtonState& buttons)
{
    if (buttons.getButtonState() == 0)
        setHoverSide(sideOf(where));
    return kMouseEventHandled;
}

CMouseEventResult CZKRockerSwitch::onMouseEntered(CPoint& where, const CButtonState&)
{
    setHoverSide(sideOf(where));
    return kMouseEventHandled;
}

CMouseEventResult CZKRockerSwitch::onMouseExited(CPoint&, const CButtonState&)
{
    setHoverSide(0);
    return kMouseEventHandled;
}

bool CZKRockerSwitch::onWheel(const CPoint&, const float& distance, const CButtonState&)
{
    if (distance >= -0.1f && distance <= 0.1f)
        return true;
    removeRestTimer();
    value = distance > 0.f ? -1.f : 1.f;
    setDirty();
    beginEdit();
    valueChanged();
    endEdit();
    resetValueTimer = new CVSTGUITimer(this, kRestAfterMs, true);
    return true;
}

CMessageResult CZKRockerSwitch::notify(CBaseObject* sender, IdStringPtr message)
{
    if (!resetValueTimer || sender != resetValueTimer)
        return CRockerSwitch::notify(sender, message);
    comeToRest();
    return kMessageNotified;
}
