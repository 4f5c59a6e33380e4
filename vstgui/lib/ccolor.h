// CColor: straight (not premultiplied) red, green, blue and alpha, 0 to 255.
#pragma once

#include <cstdint>

namespace VSTGUI {

struct CColor {
    constexpr CColor(uint8_t red = 255, uint8_t green = 255, uint8_t blue = 255,
                     uint8_t alpha = 255)
        : red(red), green(green), blue(blue), alpha(alpha)
    {
    }
    CColor& operator()(uint8_t r, uint8_t g, uint8_t b, uint8_t a)
    {
        return *this = CColor(r, g, b, a);
    }

    constexpr bool operator==(const CColor& c) const
    {
        return red == c.red && green == c.green && blue == c.blue && alpha == c.alpha;
    }
    constexpr bool operator!=(const CColor& c) const { return !(*this == c); }

    uint8_t red;
    uint8_t green;
    uint8_t blue;
    uint8_t alpha;
};

constexpr CColor MakeCColor(uint8_t red = 0, uint8_t green = 0, uint8_t blue = 0,
                            uint8_t alpha = 255)
{
    return CColor(red, green, blue, alpha);
}

inline constexpr CColor kTransparentCColor(255, 255, 255, 0);
inline constexpr CColor kBlackCColor(0, 0, 0, 255);
inline constexpr CColor kWhiteCColor(255, 255, 255, 255);
inline constexpr CColor kGreyCColor(127, 127, 127, 255);
inline constexpr CColor kRedCColor(255, 0, 0, 255);
inline constexpr CColor kGreenCColor(0, 255, 0, 255);
inline constexpr CColor kBlueCColor(0, 0, 255, 255);
inline constexpr CColor kYellowCColor(255, 255, 0, 255);
inline constexpr CColor kCyanCColor(0, 255, 255, 255);
inline constexpr CColor kMagentaCColor(255, 0, 255, 255);

}  // namespace VSTGUI
