// Win32Surface: opaque pixels in a device-independent bitmap, from which a window is painted.
#pragma once

#include "vstgui/platform/iplatformsurface.h"
#include "vstgui/platform/win32/win32gdiplus.h"

namespace VSTGUI {

class Win32Surface : public IPlatformSurface {
public:
    // Null when memory or handles run out.
    static Win32Surface* create(int width, int height);

    CPoint getSize() const override;
    void setClip(const CRect& rect) override;
    void fillRect(const CRect& rect, const CColor& color) override;
    void drawBitmap(IPlatformBitmap* bitmap, const CRect& target, const CPoint& source,
                    float alpha) override;
    void drawString(IPlatformFont* font, UTF8StringPtr text, const CPoint& baseline,
                    const CColor& color, bool antialias) override;
    Pixels readPixels() const override;

    // Copies that part to the same place in the target.
    void copyTo(HDC target, const RECT& rect) const;

private:
    Win32Surface(int width, int height);
    ~Win32Surface() override;
    uint32_t* row(int y) const { return pixels + static_cast<ptrdiff_t>(y) * width; }

    GdiplusSession session;
    int width;
    int height;
    RECT clip;
    HDC device;
    HBITMAP section{nullptr};
    HGDIOBJ sectionBefore{nullptr};
    uint32_t* pixels{nullptr};  // 0xFFRRGGBB, rows from the top without gaps
    GdipImage image;            // for text, on the same pixels
};

}  // namespace VSTGUI
