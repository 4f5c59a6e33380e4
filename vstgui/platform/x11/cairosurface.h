// CairoSurface: pixels in memory, drawn with cairo.
#pragma once

#include "vstgui/platform/iplatformsurface.h"
#include "vstgui/platform/x11/cairohandle.h"

namespace VSTGUI {

class CairoSurface : public IPlatformSurface {
public:
    // An image surface in cairo's format ARGB32.
    explicit CairoSurface(CairoHandle<cairo_surface_t> surface);

    CPoint getSize() const override;
    void setClip(const CRect& rect) override;
    void fillRect(const CRect& rect, const CColor& color) override;
    void drawBitmap(IPlatformBitmap* bitmap, const CRect& target, const CPoint& source,
                    float alpha) override;
    void drawString(IPlatformFont* font, UTF8StringPtr text, const CPoint& baseline,
                    const CColor& color, bool antialias) override;
    Pixels readPixels() const override;

    // The image, with all drawing completed.
    cairo_surface_t* getImage() const;

private:
    CairoHandle<cairo_surface_t> surface;
    CairoHandle<cairo_t> cairo;
};

}  // namespace VSTGUI
