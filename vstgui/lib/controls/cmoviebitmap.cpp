// The frame of a value.
#include "vstgui/lib/controls/cmoviebitmap.h"

#include "vstgui/lib/cdrawcontext.h"

namespace VSTGUI {

CMovieBitmap::CMovieBitmap(const CRect& rect, IControlListener* l, int32_t t, CBitmap* back,
                           const CPoint& o)
    : CMovieBitmap(rect, l, t, countFrames(back, rect.getHeight()), rect.getHeight(), back, o)
{
}

CMovieBitmap::CMovieBitmap(const CRect& rect, IControlListener* l, int32_t t, int32_t frames,
                           CCoord frameHeight, CBitmap* back, const CPoint& o)
    : CControl(rect, l, t, back), IMultiBitmapControl(frameHeight, frames), offset(o)
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
