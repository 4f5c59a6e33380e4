#include "editor/controls/CPowerLED.h"

#include "editor/controls/Filmstrip.h"

#include "vstgui/lib/cbitmap.h"

using namespace VSTGUI;

void CPowerLED::draw(CDrawContext* context)
{
    const int32_t frame = getPower() ? stepOf(getValue(), getNumSubPixmaps()) : 0;
    if (CBitmap* bitmap = getDrawBackground())
        bitmap->draw(context, getViewSize(), offset + CPoint(0, getHeightOfOneImage() * frame));
    setDirty(false);
}
