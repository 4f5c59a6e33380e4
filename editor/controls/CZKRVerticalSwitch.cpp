#include "editor/controls/CZKRVerticalSwitch.h"

#include "editor/controls/Filmstrip.h"
#include "editor/controls/PressGuard.h"

using namespace VSTGUI;

CZKRVerticalSwitch::CZKRVerticalSwitch(const CRect& size, IControlListener* listener, int32_t tag,
                                       int32_t subPixmaps, CCoord heightOfOneImage,
                                       int32_t maxPositions, CBitmap* background,
                                       const CPoint& offset)
    : CVerticalSwitch(size, listener, tag, subPixmaps, heightOfOneImage, maxPositions, background,
                      offset)
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
