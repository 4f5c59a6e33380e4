#include "vstgui/platform/pixels.h"

namespace VSTGUI {

Pixels::Pixels(int32_t width, int32_t height)
    : width(width), height(height),
      rgba(static_cast<size_t>(width) * static_cast<size_t>(height) * 4)
{
}

CColor Pixels::at(int32_t x, int32_t y) const
{
    if (x < 0 || y < 0 || x >= width || y >= height)
        return CColor(0, 0, 0, 0);
    const uint8_t* p = &rgba[static_cast<size_t>(y * width + x) * 4];
    return CColor(p[0], p[1], p[2], p[3]);
}

void Pixels::set(int32_t x, int32_t y, const CColor& color)
{
    if (x < 0 || y < 0 || x >= width || y >= height)
        return;
    uint8_t* p = &rgba[static_cast<size_t>(y * width + x) * 4];
    p[0] = color.red;
    p[1] = color.green;
    p[2] = color.blue;
    p[3] = color.alpha;
}

}  // namespace VSTGUI
