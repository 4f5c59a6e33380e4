#include "editor/controls/CSaveLoadButton.h"

#include "vstgui/lib/cbitmap.h"

using namespace VSTGUI;

CSaveLoadButton::CSaveLoadButton(const CRect& size, IControlListener* listener, int32_t tag,
                                 CCoord heightOfOneImage, CBitmap* background, const CPoint& offset)
    : CKickButton(size, listener, tag, heightOfOneImage, background, offset)
{
    setWantsFocus(false);
}

void CSaveLoadButton::draw(CDrawContext* context)
{
    const int32_t frame = value != 0.f ? 2 : hover ? 1 : 0;
    if (CBitmap* bitmap = getDrawBackground())
        bitmap->draw(context, getViewSize(), offset + CPoint(0, getHeightOfOneImage() * frame));
    setDirty(false);
}

CMouseEventResult CSaveLoadButton::onMouseDown(CPoint&, const CButtonState& buttons)
{
    if (!(buttons & (kLButton | kRButton)) || !getListener())
        return kMouseEventNotHandled;
    value = buttons == kRButton ? 0.5f : 1.f;
    setDirty();  // drawn while the dialog is open
    valueChanged();
    value = 0.f;
    setDirty();
    return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

CMouseEventResult CSaveLoadButton::onMouseEntered(CPoint&, const CButtonState&)
{
    hover = true;
    setDirty();
    return kMouseEventHandled;
}

CMouseEventResult CSaveLoadButton::onMouseExited(CPoint&, const CButtonState&)
{
    hover = false;
    setDirty();
    return kMouseEventHandled;
}
