// Win32Surface: blends rectangles and pictures itself, with the same result on every system; GDI+
// draws the text.
#include "vstgui/platform/win32/win32surface.h"

#include "vstgui/platform/win32/win32bitmap.h"
#include "vstgui/platform/win32/win32font.h"

#include <cmath>

namespace VSTGUI {

using namespace Gdiplus::DllExports;

namespace {

constexpr uint32_t kOpaque = 0xFF000000;

// x / 255, rounded, for x up to 255 * 255.
uint32_t divideBy255(uint32_t x)
{
    x += 128;
    return (x + (x >> 8)) >> 8;
}

// All four channels times level / 255.
uint32_t scale(uint32_t pixel, uint32_t level)
{
    return divideBy255((pixel >> 24) * level) << 24
        | divideBy255((pixel >> 16 & 0xFF) * level) << 16
        | divideBy255((pixel >> 8 & 0xFF) * level) << 8 | divideBy255((pixel & 0xFF) * level);
}

// A premultiplied pixel over an opaque one.
uint32_t over(uint32_t above, uint32_t below)
{
    if (above >= kOpaque)
        return above;
    return (above + scale(below, 255 - (above >> 24))) | kOpaque;
}

uint32_t premultiplied(const CColor& color, uint32_t alpha)
{
    return scale(kOpaque | uint32_t{color.red} << 16 | uint32_t{color.green} << 8 | color.blue,
                 alpha);
}

// The part of pixel (or row) i that lies between low and high.
double covered(LONG i, double low, double high)
{
    return std::min(i + 1., high) - std::max<double>(i, low);
}

}  // namespace

Win32Surface* Win32Surface::create(int width, int height)
{
    auto surface = owned(new Win32Surface(width, height));
    if (!surface->image)
        return nullptr;
    surface->remember();
    return surface;
}

Win32Surface::Win32Surface(int width, int height)
    : width(width), height(height), clip{0, 0, width, height}, device(CreateCompatibleDC(nullptr))
{
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* memory = nullptr;
    section = CreateDIBSection(device, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
    if (!device || !section)
        return;
    sectionBefore = SelectObject(device, section);
    pixels = static_cast<uint32_t*>(memory);
    std::fill_n(pixels, static_cast<ptrdiff_t>(width) * height, kOpaque);
    Gdiplus::GpBitmap* created = nullptr;
    GdipCreateBitmapFromScan0(width, height, width * static_cast<INT>(sizeof(uint32_t)),
                              PixelFormat32bppRGB, reinterpret_cast<BYTE*>(pixels), &created);
    image.reset(created);
}

Win32Surface::~Win32Surface()
{
    image.reset();
    if (sectionBefore)
        SelectObject(device, sectionBefore);
    if (section)
        DeleteObject(section);
    if (device)
        DeleteDC(device);
}

CPoint Win32Surface::getSize() const
{
    return {static_cast<CCoord>(width), static_cast<CCoord>(height)};
}

void Win32Surface::setClip(const CRect& rect)
{
    const auto cut = [](CCoord x, int limit) {
        return static_cast<LONG>(std::clamp(x, 0., static_cast<CCoord>(limit)));
    };
    clip = {cut(rect.left, width), cut(rect.top, height), cut(rect.right, width),
            cut(rect.bottom, height)};
}

void Win32Surface::fillRect(const CRect& rect, const CColor& color)
{
    const CRect inside(std::max<CCoord>(rect.left, clip.left), std::max<CCoord>(rect.top, clip.top),
                       std::min<CCoord>(rect.right, clip.right),
                       std::min<CCoord>(rect.bottom, clip.bottom));
    // Also true for NaN.
    if (!(inside.left < inside.right && inside.top < inside.bottom))
        return;
    const auto right = static_cast<LONG>(std::ceil(inside.right));
    const auto bottom = static_cast<LONG>(std::ceil(inside.bottom));
    for (auto y = static_cast<LONG>(inside.top); y < bottom; ++y) {
        const double rowLevel = color.alpha * covered(y, inside.top, inside.bottom);
        uint32_t* const line = row(y);
        for (auto x = static_cast<LONG>(inside.left); x < right; ++x) {
            const double level = rowLevel * covered(x, inside.left, inside.right);
            line[x] = over(premultiplied(color, static_cast<uint32_t>(level + 0.5)), line[x]);
        }
    }
}

void Win32Surface::drawBitmap(IPlatformBitmap* bitmap, const CRect& target, const CPoint& source,
                              float alpha)
{
    const auto* picture = static_cast<const Win32Bitmap*>(bitmap);
    const auto targetLeft = static_cast<LONG>(target.left);
    const auto targetTop = static_cast<LONG>(target.top);
    const LONG left = std::max(targetLeft, clip.left);
    const LONG right = std::min(static_cast<LONG>(target.right), clip.right);
    const LONG bottom = std::min(static_cast<LONG>(target.bottom), clip.bottom);
    const auto level = static_cast<uint32_t>(std::lround(alpha * 255.f));
    for (LONG y = std::max(targetTop, clip.top); y < bottom; ++y) {
        const uint32_t* const from = picture->row(static_cast<int>(source.y) + (y - targetTop))
            + static_cast<int>(source.x) - targetLeft;
        uint32_t* const line = row(y);
        for (LONG x = left; x < right; ++x)
            line[x] = over(level == 255 ? from[x] : scale(from[x], level), line[x]);
    }
}

void Win32Surface::drawString(IPlatformFont* font, UTF8StringPtr text, const CPoint& baseline,
                              const CColor& color, bool antialias)
{
    if (clip.left >= clip.right || clip.top >= clip.bottom)
        return;
    Gdiplus::GpGraphics* created = nullptr;
    if (GdipGetImageGraphicsContext(image.get(), &created) != Gdiplus::Ok)
        return;
    const GdipGraphics graphics(created);
    GdipSetClipRectI(graphics.get(), clip.left, clip.top, clip.right - clip.left,
                     clip.bottom - clip.top, Gdiplus::CombineModeReplace);
    const uint32_t argb = uint32_t{color.alpha} << 24 | uint32_t{color.red} << 16
        | uint32_t{color.green} << 8 | color.blue;
    static_cast<const Win32Font*>(font)->draw(graphics.get(), text, baseline, argb, antialias);
}

Pixels Win32Surface::readPixels() const
{
    Pixels picture(width, height);
    for (int y = 0; y < height; ++y) {
        const uint32_t* const line = row(y);
        for (int x = 0; x < width; ++x)
            picture.set(x, y,
                        CColor(static_cast<uint8_t>(line[x] >> 16),
                               static_cast<uint8_t>(line[x] >> 8), static_cast<uint8_t>(line[x])));
    }
    return picture;
}

void Win32Surface::copyTo(HDC target, const RECT& rect) const
{
    BitBlt(target, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, device,
           rect.left, rect.top, SRCCOPY);
    // GDI queues the copy; the next drawing writes to the pixels directly.
    GdiFlush();
}

IPlatformSurface* IPlatformSurface::create(CCoord width, CCoord height)
{
    const auto cut = [](CCoord x) { return static_cast<int>(std::clamp(x, 1., 32767.)); };
    return Win32Surface::create(cut(width), cut(height));
}

}  // namespace VSTGUI
