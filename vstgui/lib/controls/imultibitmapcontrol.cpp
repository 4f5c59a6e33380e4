#include "vstgui/lib/controls/imultibitmapcontrol.h"

#include "vstgui/lib/cbitmap.h"
#include "vstgui/lib/controls/ccontrol.h"

namespace VSTGUI {

int32_t IMultiBitmapControl::countFrames(const CBitmap* bitmap, CCoord height)
{
    return bitmap && height > 0 ? static_cast<int32_t>(bitmap->getHeight() / height) : 0;
}

int32_t IMultiBitmapControl::frameAt(float normalized) const
{
    return static_cast<int32_t>(normalized * static_cast<float>(getNumSubPixmaps() - 1) + 0.5f);
}

bool IMultiBitmapControl::fitToFrame(CControl& control) const
{
    const CBitmap* bitmap = control.getDrawBackground();
    if (!bitmap)
        return false;
    CRect rect(control.getViewSize());
    rect.setSize(CPoint(bitmap->getWidth(), getHeightOfOneImage()));
    control.setViewSize(rect);
    control.setMouseableArea(rect);
    return true;
}

}  // namespace VSTGUI
