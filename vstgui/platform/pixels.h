// Pixels: a picture as plain bytes, and as a PNG file.
#pragma once

#include "vstgui/lib/ccolor.h"

#include <cstdint>
#include <string>
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

// Not compressed: meant for tests and snapshots.
std::vector<uint8_t> encodePng(const Pixels& pixels);
// Path in UTF-8. False when the file cannot be written.
bool writePng(const std::string& path, const Pixels& pixels);

}  // namespace VSTGUI
