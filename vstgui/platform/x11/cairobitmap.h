// CairoBitmap: a decoded PNG in a cairo image surface.
#pragma once

#include "vstgui/platform/iplatformbitmap.h"
#include "vstgui/platform/x11/cairohandle.h"

namespace VSTGUI {

class CairoBitmap : public IPlatformBitmap {
public:
    explicit CairoBitmap(CairoHandle<cairo_surface_t> surface) : surface(std::move(surface)) { }

    CPoint getSize() const override
    {
        return {static_cast<CCoord>(cairo_image_surface_get_width(surface.get())),
                static_cast<CCoord>(cairo_image_surface_get_height(surface.get()))};
    }
    cairo_surface_t* getSurface() const { return surface.get(); }

private:
    CairoHandle<cairo_surface_t> surface;
};

}  // namespace VSTGUI
