// The press and the look of a button that opens a file dialog.
#include "editor/controls/CSaveLoadButton.h"

#include "vstgui/lib/cbitmap.h"

using namespace VSTGUI;

CSaveLoadButton::CSaveLoadButton(const CRect& size_, IControlListener* listener_, int32_t tag_,
                                 CCoord heightOfOneImage_, CBitmap* background_,
                                 const CPoint& offset_)
    : CKickButton(size_, listener_, tag_, heightOfOneImage_, background_, offset_)
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
    setDirty();  // for as long as the dialog stands
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
