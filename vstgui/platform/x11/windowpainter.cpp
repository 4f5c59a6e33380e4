#include "vstgui/platform/x11/windowpainter.h"

#include <X11/Xutil.h>
#include <cstdlib>
#include <cstring>

namespace VSTGUI {
namespace X11 {

namespace {

// Scales an 8-bit channel to the visual's mask.
unsigned long channel(uint32_t value, unsigned long mask)
{
    if (mask == 0)
        return 0;
    const int shift = __builtin_ctzl(mask);
    const unsigned long maximum = mask >> shift;
    return ((value * maximum + 127) / 255) << shift;
}

// Whether the server's pixels have the layout of cairo's ARGB32.
bool sameLayout(const XImage& image)
{
    const uint16_t probe = 1;
    uint8_t low;
    std::memcpy(&low, &probe, 1);
    return image.bits_per_pixel == 32 && image.byte_order == (low ? LSBFirst : MSBFirst)
        && image.red_mask == 0xFF0000 && image.green_mask == 0xFF00 && image.blue_mask == 0xFF;
}

}  // namespace

WindowPainter::WindowPainter(Display* display, Window window, Visual* visual, int depth)
    : display(display), window(window), visual(visual), depth(depth),
      context(XCreateGC(display, window, 0, nullptr))
{
}

WindowPainter::~WindowPainter()
{
    XFreeGC(display, context);
}

void WindowPainter::copy(cairo_surface_t* image, const std::vector<CRect>& rects)
{
    auto* data = reinterpret_cast<char*>(cairo_image_surface_get_data(image));
    XImage* source =
        XCreateImage(display, visual, static_cast<unsigned int>(depth), ZPixmap, 0, data,
                     static_cast<unsigned int>(cairo_image_surface_get_width(image)),
                     static_cast<unsigned int>(cairo_image_surface_get_height(image)), 32,
                     cairo_image_surface_get_stride(image));
    if (!source)
        return;
    for (const CRect& rect : rects) {
        const int x = static_cast<int>(rect.left);
        const int y = static_cast<int>(rect.top);
        const auto width = static_cast<unsigned int>(rect.getWidth());
        const auto height = static_cast<unsigned int>(rect.getHeight());
        if (sameLayout(*source))
            XPutImage(display, window, context, source, x, y, x, y, width, height);
        else
            convertAndCopy(*source, x, y, width, height);
    }
    source->data = nullptr;  // owned by the surface
    XDestroyImage(source);
}

void WindowPainter::convertAndCopy(const XImage& source, int x, int y, unsigned int width,
                                   unsigned int height)
{
    XImage* target = XCreateImage(display, visual, static_cast<unsigned int>(depth), ZPixmap, 0,
                                  nullptr, width, height, 32, 0);
    if (!target)
        return;
    target->data =
        static_cast<char*>(std::calloc(height, static_cast<size_t>(target->bytes_per_line)));
    for (int row = 0; target->data && row < static_cast<int>(height); ++row) {
        const char* line = source.data + (y + row) * source.bytes_per_line + x * 4;
        for (int column = 0; column < static_cast<int>(width); ++column) {
            uint32_t word;
            std::memcpy(&word, line + column * 4, sizeof word);
            XPutPixel(target, column, row,
                      channel((word >> 16) & 0xFF, visual->red_mask)
                          | channel((word >> 8) & 0xFF, visual->green_mask)
                          | channel(word & 0xFF, visual->blue_mask));
        }
    }
    if (target->data)
        XPutImage(display, window, context, target, 0, 0, x, y, width, height);
    XDestroyImage(target);
}

}  // namespace X11
}  // namespace VSTGUI
