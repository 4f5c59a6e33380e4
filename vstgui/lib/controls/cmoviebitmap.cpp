#include "vstgui/lib/controls/cmoviebitmap.h"

#include "vstgui/lib/cdrawcontext.h"

namespace VSTGUI {

CMovieBitmap::CMovieBitmap(const CRect& size, IControlListener* listener, int32_t tag,
                           CBitmap* background, const CPoint& offset)
    : CMovieBitmap(size, listener, tag, countFrames(background, size.getHeight()), size.getHeight(),
                   background, offset)
{
}

CMovieBitmap::CMovieBitmap(const CRect& size, IControlListener* listener, int32_t tag,
                           int32_t subPixmaps, CCoord heightOfOneImage, CBitmap* background,
                           const CPoint& offset)
    : CControl(size, listener, tag, background), IMultiBitmapControl(heightOfOneImage, subPixmaps),
      offset(offset)
{
}

void CMovieBitmap::draw(CDrawContext* context)
{
    if (CBitmap* bitmap = getDrawBackground()) {
        const CCoord down = heightOfOneImage * frameAt(getValueNormalized());
        bitmap->draw(context, getViewSize(), CPoint(offset.x, offset.y + down));
    }
    setDirty(false);
}

}  // namespace VSTGUI
