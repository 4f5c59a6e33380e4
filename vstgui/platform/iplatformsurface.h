// IPlatformSurface: pixels in memory that can be drawn on, with a display or without.
#pragma once

#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/crect.h"
#include "vstgui/platform/pixels.h"

namespace VSTGUI {

class IPlatformBitmap;
class IPlatformFont;

// All coordinates are the surface's own pixels. Everything is drawn over what is there and is cut
// to the clip.
class IPlatformSurface : public CBaseObject {
public:
    virtual CPoint getSize() const = 0;

    // Whole pixels, inside the surface; empty: nothing is drawn.
    virtual void setClip(const CRect& clip) = 0;
    // Edges may lie inside pixels, which are then covered in part.
    virtual void fillRect(const CRect& rect, const CColor& color) = 0;
    // The part of the picture at source, as large as target, pixel for pixel. Both are whole pixels
    // and source lies inside the picture. Alpha is above 0 and at most 1.
    virtual void drawBitmap(IPlatformBitmap* bitmap, const CRect& target, const CPoint& source,
                            float alpha) = 0;
    // Baseline in whole pixels. Grey or subpixel smoothing with antialias, none without.
    virtual void drawString(IPlatformFont* font, UTF8StringPtr text, const CPoint& baseline,
                            const CColor& color, bool antialias) = 0;

    // What has been drawn so far.
    virtual Pixels readPixels() const = 0;

    // Supplied by each platform: black and opaque at first. Sizes are cut to whole pixels, at
    // least 1. Null when memory runs out. The caller owns it.
    static IPlatformSurface* create(CCoord width, CCoord height);
};

}  // namespace VSTGUI
