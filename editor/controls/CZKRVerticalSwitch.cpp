// The wheel over a vertical switch.
#include "editor/controls/CZKRVerticalSwitch.h"

#include "editor/controls/Filmstrip.h"
#include "editor/controls/PressGuard.h"

using namespace VSTGUI;

CZKRVerticalSwitch::CZKRVerticalSwitch(const CRect& size_, IControlListener* listener_,
                                       int32_t tag_, int32_t subPixmaps_, CCoord heightOfOneImage_,
                                       int32_t maxPositions, CBitmap* background_,
                                       const CPoint& offset_)
    : CVerticalSwitch(size_, listener_, tag_, subPixmaps_, heightOfOneImage_, maxPositions,
                      background_, offset_)
{
    setWantsFocus(false);
}

CMouseEventResult CZKRVerticalSwitch::onMouseDown(CPoint& where, const CButtonState& buttons)
{
    const PressGuard guard(*this);
    return CVerticalSwitch::onMouseDown(where, buttons);
}

bool CZKRVerticalSwitch::onWheel(const CPoint&, const float& distance, const CButtonState&)
{
    const int32_t positions = getNumSubPixmaps();
    if (positions < 2)
        return true;
    const float last = static_cast<float>(positions - 1);
    if (distance > 0.1f)
        value -= 1.f / last;
    else if (distance < -0.1f)
        value += 1.f / last;
    value = static_cast<float>(stepOf(value, positions)) / last;
    bounceValue();
    if (isDirty()) {
        valueChanged();
        invalid();
    }
    return true;
}
