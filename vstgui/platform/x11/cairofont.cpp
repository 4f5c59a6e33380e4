// CairoFont: fontconfig, behind cairo, finds the family or the nearest to it.
#include "vstgui/platform/x11/cairofont.h"

#include "platform/Utf8.h"

#include "vstgui/lib/cfont.h"

#include <algorithm>
#include <cairo/cairo-ft.h>
#include <fontconfig/fontconfig.h>

namespace VSTGUI {

namespace {

CairoHandle<cairo_scaled_font_t> scaledFont(cairo_font_face_t* face, CCoord size,
                                            cairo_antialias_t antialias)
{
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
    if (cairo_scaled_font_status(font.get()) != CAIRO_STATUS_SUCCESS)
        return nullptr;
    return font;
}

bool hasCharacter(cairo_scaled_font_t* font, const std::string& character)
{
    cairo_glyph_t* glyphs = nullptr;
    int count = 0;
    const auto size = static_cast<int>(character.size());
    if (cairo_scaled_font_text_to_glyphs(font, 0., 0., character.data(), size, &glyphs, &count,
                                         nullptr, nullptr, nullptr)
        != CAIRO_STATUS_SUCCESS)
        return false;
    const bool found = count > 0 && glyphs[0].index != 0;
    cairo_glyph_free(glyphs);
    return found;
}

}  // namespace

CairoFont::CairoFont(const std::string& family, CCoord size, int32_t style)
    : family(family), size(size), style(style)
{
    faces.push_back(std::make_unique<Face>(faceOf(cairo_toy_font_face_create(
        family.c_str(), style & kItalicFace ? CAIRO_FONT_SLANT_ITALIC : CAIRO_FONT_SLANT_NORMAL,
        style & kBoldFace ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL))));
}

CairoFont* CairoFont::create(const std::string& family, CCoord size, int32_t style)
{
    auto font = owned(new CairoFont(family, size, style));
    cairo_scaled_font_t* const own = font->faces.front()->smooth.get();
    if (!own)
        return nullptr;
    cairo_text_extents_t extents;
    cairo_scaled_font_text_extents(own, "H", &extents);
    font->capHeight = -extents.y_bearing;
    font->remember();
    return font;
}

CairoFont::Face CairoFont::faceOf(cairo_font_face_t* face) const
{
    Face both{scaledFont(face, size, CAIRO_ANTIALIAS_GRAY),
              scaledFont(face, size, CAIRO_ANTIALIAS_NONE)};
    cairo_font_face_destroy(face);
    if (!both.plain)
        both.smooth = nullptr;
    return both;
}

CairoFont::Face CairoFont::findFace(const std::string& character) const
{
    FcPattern* const wanted = FcPatternCreate();
    FcCharSet* const characters = FcCharSetCreate();
    FcChar32 code = 0;
    FcUtf8ToUcs4(reinterpret_cast<const FcChar8*>(character.data()), &code,
                 static_cast<int>(character.size()));
    FcCharSetAddChar(characters, code);
    FcPatternAddCharSet(wanted, FC_CHARSET, characters);
    FcPatternAddString(wanted, FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcPatternAddInteger(wanted, FC_SLANT, style & kItalicFace ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddInteger(wanted, FC_WEIGHT, style & kBoldFace ? FC_WEIGHT_BOLD : FC_WEIGHT_NORMAL);
    FcConfigSubstitute(nullptr, wanted, FcMatchPattern);
    FcDefaultSubstitute(wanted);
    FcResult result = FcResultNoMatch;
    FcPattern* const found = FcFontMatch(nullptr, wanted, &result);
    Face face;
    if (found) {
        face = faceOf(cairo_ft_font_face_create_for_pattern(found));
        FcPatternDestroy(found);
    }
    FcCharSetDestroy(characters);
    FcPatternDestroy(wanted);
    return face;
}

const CairoFont::Face& CairoFont::faceFor(const std::string& character) const
{
    const bool isAscii = character.size() == 1;
    for (const auto& face : faces) {
        if (isAscii || hasCharacter(face->smooth.get(), character))
            return *face;
    }
    if (std::find(missing.begin(), missing.end(), character) == missing.end()) {
        auto found = std::make_unique<Face>(findFace(character));
        if (found->smooth && hasCharacter(found->smooth.get(), character)) {
            faces.push_back(std::move(found));
            return *faces.back();
        }
        missing.push_back(character);
    }
    return *faces.front();
}

std::vector<CairoFont::Run> CairoFont::runsOf(UTF8StringPtr text, bool antialias) const
{
    const std::string valid = platform::validUtf8(text);
    std::vector<Run> runs;
    for (size_t next = 0, start = 0; start < valid.size(); start = next) {
        next = platform::nextCharacter(valid, start);
        const std::string character = valid.substr(start, next - start);
        const Face& face = faceFor(character);
        cairo_scaled_font_t* const font = antialias ? face.smooth.get() : face.plain.get();
        if (runs.empty() || runs.back().font != font)
            runs.push_back({font, {}});
        runs.back().text += character;
    }
    return runs;
}

CCoord CairoFont::getStringWidth(UTF8StringPtr text) const
{
    CCoord width = 0.;
    for (const Run& run : runsOf(text, true)) {
        cairo_text_extents_t extents;
        cairo_scaled_font_text_extents(run.font, run.text.c_str(), &extents);
        width += extents.x_advance;
    }
    return width;
}

IPlatformFont* IPlatformFont::create(UTF8StringPtr family, CCoord size, int32_t style)
{
    return size > 0 ? CairoFont::create(platform::validUtf8(family), size, style) : nullptr;
}

}  // namespace VSTGUI
