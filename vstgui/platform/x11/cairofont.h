// CairoFont: a cairo font at one size.
#pragma once

#include "vstgui/platform/iplatformfont.h"
#include "vstgui/platform/x11/cairohandle.h"

namespace VSTGUI {

class CairoFont : public IPlatformFont {
public:
    // The same font with grey smoothing and without smoothing.
    CairoFont(CairoHandle<cairo_scaled_font_t> smoothFont,
              CairoHandle<cairo_scaled_font_t> plainFont);

    CCoord getCapHeight() const override { return capHeight; }
    CCoord getStringWidth(UTF8StringPtr text) const override;
    cairo_scaled_font_t* getFont(bool antialias) const
    {
        return antialias ? smoothFont.get() : plainFont.get();
    }

private:
    CairoHandle<cairo_scaled_font_t> smoothFont;
    CairoHandle<cairo_scaled_font_t> plainFont;
    CCoord capHeight;
};

}  // namespace VSTGUI
