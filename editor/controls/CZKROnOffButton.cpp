#include "editor/controls/CZKROnOffButton.h"

#include "editor/controls/Filmstrip.h"
#include "editor/controls/PressToToggle.h"

using namespace VSTGUI;

CZKROnOffButton::CZKROnOffButton(const CRect& size, IControlListener* listener, int32_t tag,
                                 CBitmap* background, int32_t style)
    : CControl(size, listener, tag, background), style(style)
{
}

void CZKROnOffButton::draw(CDrawContext* context)
{
    drawFrame(context, getDrawBackground(), getViewSize(),
              isOn() ? frameHeight(getDrawBackground(), 2) : 0);
    setDirty(false);
}

CMouseEventResult CZKROnOffButton::onMouseDown(CPoint&, const CButtonState& buttons)
{
    return pressToToggle(*this, buttons);
}

bool CZKROnOffButton::onWheel(const CPoint&, const float& distance, const CButtonState&)
{
    const float turn = wheelInverted ? distance : -distance;
    const bool turnsOn = turn > 0.1f && !(wheelLatching && isOn());
    const bool turnsOff = turn < -0.1f && !(wheelLatching && !isOn());
    if (turnsOn || turnsOff)
        toggle(*this);
    if (isDirty() && getListener()) {
        beginEdit();
        valueChanged();
        endEdit();
    }
    setDirty();
    return true;
}
