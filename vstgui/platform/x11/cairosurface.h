// CairoSurface: pixels in memory, drawn on by cairo.
#pragma once

#include "vstgui/platform/iplatformsurface.h"
#include "vstgui/platform/x11/cairohandle.h"

namespace VSTGUI {

class CairoSurface : public IPlatformSurface {
public:
    // The image is in cairo's format ARGB32.
    explicit CairoSurface(CairoHandle<cairo_surface_t> image);

    CPoint getSize() const override;
    void setClip(const CRect& clip) override;
    void fillRect(const CRect& rect, const CColor& color) override;
    void drawBitmap(IPlatformBitmap* bitmap, const CRect& target, const CPoint& source,
                    float alpha) override;
    void drawString(IPlatformFont* font, UTF8StringPtr text, const CPoint& baseline,
                    const CColor& color, bool antialias) override;
    Pixels readPixels() const override;

    // With everything drawn so far in it.
    cairo_surface_t* getImage() const;

private:
    CairoHandle<cairo_surface_t> surface;
    CairoHandle<cairo_t> cairo;
};

}  // namespace VSTGUI
