// Pixels: a picture as plain bytes.
#pragma once

#include "vstgui/lib/ccolor.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace VSTGUI {

struct Pixels {
    Pixels() = default;
    Pixels(int32_t w, int32_t h);  // transparent black

    // Transparent black outside.
    CColor at(int32_t x, int32_t y) const;
    // Ignored outside.
    void set(int32_t x, int32_t y, const CColor& color);

    int32_t width{0};
    int32_t height{0};
    std::vector<uint8_t> rgba;  // straight alpha, rows from the top
};

}  // namespace VSTGUI
