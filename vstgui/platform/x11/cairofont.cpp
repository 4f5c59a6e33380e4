// CairoFont: fontconfig, behind cairo, finds the family or the nearest to it.
#include "vstgui/platform/x11/cairofont.h"

#include "platform/Utf8.h"

#include "vstgui/lib/cfont.h"

namespace VSTGUI {

namespace {

CairoHandle<cairo_scaled_font_t> scaledFont(UTF8StringPtr family, CCoord size, int32_t style,
                                            cairo_antialias_t antialias)
{
    cairo_font_face_t* face = cairo_toy_font_face_create(
        family, style & kItalicFace ? CAIRO_FONT_SLANT_ITALIC : CAIRO_FONT_SLANT_NORMAL,
        style & kBoldFace ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, antialias);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_ON);
    cairo_matrix_t toUser;
    cairo_matrix_t toDevice;
    cairo_matrix_init_scale(&toUser, size, size);
    cairo_matrix_init_identity(&toDevice);
    CairoHandle<cairo_scaled_font_t> font(
        cairo_scaled_font_create(face, &toUser, &toDevice, options));
    cairo_font_options_destroy(options);
    cairo_font_face_destroy(face);
    if (cairo_scaled_font_status(font.get()) != CAIRO_STATUS_SUCCESS)
        return nullptr;
    return font;
}

}  // namespace

CairoFont::CairoFont(CairoHandle<cairo_scaled_font_t> smoothFont,
                     CairoHandle<cairo_scaled_font_t> plainFont)
    : smoothFont(std::move(smoothFont)), plainFont(std::move(plainFont))
{
    cairo_text_extents_t extents;
    cairo_scaled_font_text_extents(this->smoothFont.get(), "H", &extents);
    capHeight = -extents.y_bearing;
}

CCoord CairoFont::getStringWidth(UTF8StringPtr text) const
{
    cairo_text_extents_t extents;
    cairo_scaled_font_text_extents(smoothFont.get(), platform::validUtf8(text).c_str(), &extents);
    return extents.x_advance;
}

IPlatformFont* IPlatformFont::create(UTF8StringPtr family, CCoord size, int32_t style)
{
    if (!(size > 0))
        return nullptr;
    const std::string name = platform::validUtf8(family);
    auto smooth = scaledFont(name.c_str(), size, style, CAIRO_ANTIALIAS_GRAY);
    auto plain = scaledFont(name.c_str(), size, style, CAIRO_ANTIALIAS_NONE);
    if (!smooth || !plain)
        return nullptr;
    return new CairoFont(std::move(smooth), std::move(plain));
}

}  // namespace VSTGUI
