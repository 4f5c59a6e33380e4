// Win32Bitmap: a picture as premultiplied pixels in memory; it holds no GDI+ object.
#pragma once

#include "vstgui/platform/iplatformbitmap.h"

#include <vector>

namespace VSTGUI {

class Win32Bitmap : public IPlatformBitmap {
public:
    // Premultiplied 0xAARRGGBB, rows from the top without gaps.
    Win32Bitmap(int width, int height, std::vector<uint32_t> pixels);

    CPoint getSize() const override;
    const uint32_t* row(int y) const;

private:
    int width;
    int height;
    std::vector<uint32_t> pixels;
};

}  // namespace VSTGUI
