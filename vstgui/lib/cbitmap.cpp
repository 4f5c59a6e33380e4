#include "vstgui/lib/cbitmap.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/platform/iplatformbitmap.h"

namespace VSTGUI {

CBitmap::CBitmap(const CResourceDescription& description)
    : description(description), platformBitmap(IPlatformBitmap::load(description))
{
}

CBitmap::CBitmap(const CBitmap& other) = default;

CBitmap::~CBitmap() = default;

bool CBitmap::isLoaded() const
{
    return platformBitmap != nullptr;
}

CCoord CBitmap::getWidth() const
{
    return platformBitmap ? platformBitmap->getSize().x : 0;
}

CCoord CBitmap::getHeight() const
{
    return platformBitmap ? platformBitmap->getSize().y : 0;
}

IPlatformBitmap* CBitmap::getPlatformBitmap() const
{
    return platformBitmap;
}

void CBitmap::draw(CDrawContext* context, const CRect& rect, const CPoint& offset, float alpha)
{
    CRect clip;
    if (!context->getClipRect(clip).bound(rect).isEmpty())
        context->drawBitmap(this, rect, offset, alpha);
}

}  // namespace VSTGUI
