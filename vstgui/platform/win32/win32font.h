// Win32Font: a GDI+ font that measures and draws a line of text.
#pragma once

#include "vstgui/lib/cpoint.h"
#include "vstgui/platform/iplatformfont.h"
#include "vstgui/platform/win32/win32gdiplus.h"

namespace VSTGUI {

class Win32Font : public IPlatformFont {
public:
    Win32Font(Gdiplus::GpFontFamily* family, CCoord size, int32_t style);

    bool isValid() const { return font && format; }
    CCoord getCapHeight() const override { return capHeight; }
    CCoord getStringWidth(UTF8StringPtr text) const override;

    // From the left end of the baseline.
    void draw(Gdiplus::GpGraphics* graphics, UTF8StringPtr text, const CPoint& baseline,
              uint32_t argb, bool antialias) const;

private:
    GdiplusSession session;
    GdipFont font;
    GdipFormat format;
    CCoord ascent;  // from the top of the line to the baseline
    CCoord capHeight;
};

}  // namespace VSTGUI
