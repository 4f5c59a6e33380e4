// Pixels: a picture as an array of bytes.
#pragma once

#include "vstgui/lib/ccolor.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace VSTGUI {

struct Pixels {
    Pixels() = default;
    Pixels(int32_t width, int32_t height);  // transparent black

    // Transparent black for coordinates outside.
    CColor at(int32_t x, int32_t y) const;
    // Coordinates outside are ignored.
    void set(int32_t x, int32_t y, const CColor& color);

    int32_t width{0};
    int32_t height{0};
    std::vector<uint8_t> rgba;  // straight alpha, rows from the top
};

}  // namespace VSTGUI
