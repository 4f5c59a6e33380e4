#include "vstgui/platform/x11/cairosurface.h"

#include "vstgui/platform/x11/cairobitmap.h"
#include "vstgui/platform/x11/cairofont.h"

#include <algorithm>
#include <cstring>

namespace VSTGUI {

namespace {

void setSource(cairo_t* cairo, const CColor& c)
{
    cairo_set_source_rgba(cairo, c.red / 255., c.green / 255., c.blue / 255., c.alpha / 255.);
}

void addRect(cairo_t* cairo, const CRect& r)
{
    cairo_rectangle(cairo, r.left, r.top, r.getWidth(), r.getHeight());
}

uint8_t straight(uint32_t premultiplied, uint32_t alpha)
{
    return alpha == 0
        ? 0
        : static_cast<uint8_t>(std::min(255u, (premultiplied * 255 + alpha / 2) / alpha));
}

}  // namespace

CairoSurface::CairoSurface(CairoHandle<cairo_surface_t> surface)
    : surface(std::move(surface)), cairo(cairo_create(this->surface.get()))
{
    setSource(cairo.get(), kBlackCColor);
    cairo_paint(cairo.get());
}

IPlatformSurface* IPlatformSurface::create(CCoord width, CCoord height)
{
    CairoHandle<cairo_surface_t> image(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(std::max(width, 1.)),
                                   static_cast<int>(std::max(height, 1.))));
    if (cairo_surface_status(image.get()) != CAIRO_STATUS_SUCCESS)
        return nullptr;
    return new CairoSurface(std::move(image));
}

CPoint CairoSurface::getSize() const
{
    return {static_cast<CCoord>(cairo_image_surface_get_width(surface.get())),
            static_cast<CCoord>(cairo_image_surface_get_height(surface.get()))};
}

void CairoSurface::setClip(const CRect& rect)
{
    cairo_reset_clip(cairo.get());
    addRect(cairo.get(), rect);
    cairo_clip(cairo.get());
}

void CairoSurface::fillRect(const CRect& rect, const CColor& color)
{
    setSource(cairo.get(), color);
    addRect(cairo.get(), rect);
    cairo_fill(cairo.get());
}

void CairoSurface::drawBitmap(IPlatformBitmap* bitmap, const CRect& target, const CPoint& source,
                              float alpha)
{
    cairo_t* c = cairo.get();
    cairo_save(c);
    addRect(c, target);
    cairo_clip(c);
    cairo_set_source_surface(c, static_cast<CairoBitmap*>(bitmap)->getSurface(),
                             target.left - source.x, target.top - source.y);
    cairo_pattern_set_filter(cairo_get_source(c), CAIRO_FILTER_NEAREST);
    cairo_paint_with_alpha(c, static_cast<double>(alpha));
    cairo_restore(c);
}

void CairoSurface::drawString(IPlatformFont* font, UTF8StringPtr text, const CPoint& baseline,
                              const CColor& color, bool antialias)
{
    setSource(cairo.get(), color);
    cairo_move_to(cairo.get(), baseline.x, baseline.y);
    for (const auto& run : static_cast<CairoFont*>(font)->runsOf(text, antialias)) {
        cairo_set_scaled_font(cairo.get(), run.font);
        cairo_show_text(cairo.get(), run.text.c_str());
    }
    cairo_new_path(cairo.get());
}

cairo_surface_t* CairoSurface::getImage() const
{
    cairo_surface_flush(surface.get());
    return surface.get();
}

Pixels CairoSurface::readPixels() const
{
    cairo_surface_t* image = getImage();
    Pixels pixels(cairo_image_surface_get_width(image), cairo_image_surface_get_height(image));
    const unsigned char* data = cairo_image_surface_get_data(image);
    const auto stride = static_cast<size_t>(cairo_image_surface_get_stride(image));
    uint8_t* out = pixels.rgba.data();
    for (size_t y = 0; y < static_cast<size_t>(pixels.height); ++y) {
        for (size_t x = 0; x < static_cast<size_t>(pixels.width); ++x) {
            uint32_t word;
            std::memcpy(&word, data + y * stride + x * 4, sizeof word);
            const uint32_t alpha = word >> 24;
            *out++ = straight((word >> 16) & 0xFF, alpha);
            *out++ = straight((word >> 8) & 0xFF, alpha);
            *out++ = straight(word & 0xFF, alpha);
            *out++ = static_cast<uint8_t>(alpha);
        }
    }
    return pixels;
}

}  // namespace VSTGUI
