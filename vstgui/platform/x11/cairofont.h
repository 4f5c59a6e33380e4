// CairoFont: a cairo font at one size, with others for the characters that it lacks.
#pragma once

#include "vstgui/platform/iplatformfont.h"
#include "vstgui/platform/x11/cairohandle.h"

#include <memory>
#include <string>
#include <vector>

namespace VSTGUI {

class CairoFont : public IPlatformFont {
public:
    // Null if cairo has no fonts.
    static CairoFont* create(const std::string& family, CCoord size, int32_t style);

    CCoord getCapHeight() const override { return capHeight; }
    CCoord getStringWidth(UTF8StringPtr text) const override;

    // Successive parts of a text, each in the first font that has its characters. Scripts whose
    // letters join or run from right to left come out letter by letter from the left.
    struct Run {
        cairo_scaled_font_t* font;
        std::string text;
    };
    std::vector<Run> runsOf(UTF8StringPtr text, bool antialias) const;

private:
    // With grey smoothing and without smoothing.
    struct Face {
        CairoHandle<cairo_scaled_font_t> smooth;
        CairoHandle<cairo_scaled_font_t> plain;
    };

    CairoFont(const std::string& family, CCoord size, int32_t style);
    // Releases the font face. Without fonts `smooth` is null.
    Face faceOf(cairo_font_face_t* face) const;
    // The first that has the character; the first of all if none has.
    const Face& faceFor(const std::string& character) const;
    Face findFace(const std::string& character) const;

    const std::string family;
    const CCoord size;
    const int32_t style;
    CCoord capHeight{0};
    mutable std::vector<std::unique_ptr<Face>> faces;  // the font itself, then the others found
    mutable std::vector<std::string> missing;          // characters that no font has
};

}  // namespace VSTGUI
