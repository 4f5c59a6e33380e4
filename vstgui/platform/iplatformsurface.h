// IPlatformSurface: pixels in memory to draw on; needs no display.
#pragma once

#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/crect.h"
#include "vstgui/platform/pixels.h"

namespace VSTGUI {

class IPlatformBitmap;
class IPlatformFont;

// All coordinates are in the surface's pixels. Everything is blended over what is there and limited
// to the clip rectangle.
class IPlatformSurface : public CBaseObject {
public:
    virtual CPoint getSize() const = 0;

    // Whole pixels inside the surface. If empty, nothing is drawn.
    virtual void setClip(const CRect& rect) = 0;
    // Pixels that an edge divides are blended by the part covered.
    virtual void fillRect(const CRect& rect, const CColor& color) = 0;
    // Draws the part of the picture at `source`, as large as `target`, unscaled. Both are whole
    // pixels, and the part lies inside the picture. Alpha is above 0 and at most 1.
    virtual void drawBitmap(IPlatformBitmap* bitmap, const CRect& target, const CPoint& source,
                            float alpha) = 0;
    // Baseline in whole pixels. With antialias grey or subpixel smoothing, else none.
    virtual void drawString(IPlatformFont* font, UTF8StringPtr text, const CPoint& baseline,
                            const CColor& color, bool antialias) = 0;

    // What has been drawn so far.
    virtual Pixels readPixels() const = 0;

    // Implemented by each platform. Opaque black at first. Sizes are truncated to whole pixels, at
    // least 1. Null when memory runs out. The caller owns it.
    static IPlatformSurface* create(CCoord width, CCoord height);
};

}  // namespace VSTGUI
