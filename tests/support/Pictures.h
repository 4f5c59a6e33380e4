// Compares windows with reference pictures, pixel for pixel. The references serve both systems, so
// texts, which differ, are masked. With ZKR_RENEW_PICTURES set, the shown picture becomes the
// reference.
#pragma once

#include "tests/support/Png.h"

#include "vstgui/lib/cfont.h"
#include "vstgui/platform/iplatformbitmap.h"
#include "vstgui/platform/iplatformfont.h"
#include "vstgui/platform/iplatformsurface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// Empty if the file is missing.
inline VSTGUI::Pixels readPng(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    const auto bitmap = VSTGUI::owned(VSTGUI::IPlatformBitmap::createFromPng(
        reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()));
    if (!bitmap)
        return {};
    const VSTGUI::CPoint size = bitmap->getSize();
    const auto surface = VSTGUI::owned(VSTGUI::IPlatformSurface::create(size.x, size.y));
    const VSTGUI::CRect all(VSTGUI::CPoint(), size);
    surface->setClip(all);
    surface->drawBitmap(bitmap, all, {0, 0}, 1.0f);
    return surface->readPixels();
}

// The rectangles of system-rendered text in an editor of this width: the preset's name and, in the
// wide layouts, the hint.
inline std::vector<VSTGUI::CRect> textsOfEditor(int width)
{
    const double hint = width == 894 ? 520 : 395;
    return {{139, 488, 255, 504}, {hint, 488, hint + 215, 504}};
}

// The largest difference of two colours in a channel, 0 to 255.
inline int furthestChannel(const VSTGUI::CColor& a, const VSTGUI::CColor& b)
{
    return std::max({std::abs(a.red - b.red), std::abs(a.green - b.green),
                     std::abs(a.blue - b.blue), std::abs(a.alpha - b.alpha)});
}

struct Difference {
    int pixels = 0;      // number that differs by more than 1 of 255 in a channel
    VSTGUI::CRect area;  // bounds of those pixels
};

// If the sizes differ, all pixels of the larger one. Pixels inside the masks are ignored.
inline Difference difference(const VSTGUI::Pixels& a, const VSTGUI::Pixels& b,
                             const std::vector<VSTGUI::CRect>& masks = {})
{
    Difference found;
    for (int y = 0; y < std::max(a.height, b.height); ++y)
        for (int x = 0; x < std::max(a.width, b.width); ++x) {
            const auto covers = [&](const VSTGUI::CRect& mask) {
                return mask.pointInside(VSTGUI::CPoint(x, y));
            };
            if (furthestChannel(a.at(x, y), b.at(x, y)) <= 1
                || std::any_of(masks.begin(), masks.end(), covers))
                continue;
            const VSTGUI::CRect pixel(x, y, x + 1, y + 1);
            found.area = found.pixels == 0 ? pixel : VSTGUI::CRect(found.area).unite(pixel);
            ++found.pixels;
        }
    return found;
}

// Whether the toolkit has drawn a text in its usual font on one colour.
inline bool showsText(const VSTGUI::Pixels& shown, const std::string& text,
                      const VSTGUI::CColor& colour, const VSTGUI::CColor& back)
{
    VSTGUI::IPlatformFont* const font = VSTGUI::kNormalFont->getPlatformFont();
    const double height = std::ceil(font->getCapHeight());
    const VSTGUI::CRect all(0, 0, std::floor(font->getStringWidth(text.c_str())), height);
    const auto surface = VSTGUI::owned(VSTGUI::IPlatformSurface::create(all.right, height));
    surface->setClip(all);
    surface->fillRect(all, back);
    surface->drawString(font, text.c_str(), {0, height}, colour, true);
    const VSTGUI::Pixels letters = surface->readPixels();
    const auto standsAt = [&](int left, int top) {
        for (int x = 0; x < letters.width; ++x)
            for (int y = 0; y < letters.height; ++y)
                if (furthestChannel(letters.at(x, y), shown.at(left + x, top + y)) > 1)
                    return false;
        return true;
    };
    for (int top = 0; top + letters.height <= shown.height; ++top)
        for (int left = 0; left + letters.width <= shown.width; ++left)
            if (standsAt(left, top))
                return true;
    return false;
}

inline std::string picturePath(const std::string& name)
{
    return std::string(ZKR_PICTURES) + "/" + name + ".png";
}

inline void expectPicture(const VSTGUI::Pixels& shown, const std::string& name,
                          const std::vector<VSTGUI::CRect>& masks = {})
{
    const std::string reference = picturePath(name);
    if (std::getenv("ZKR_RENEW_PICTURES")) {
        ASSERT_TRUE(writePng(reference, shown)) << reference;
    }
    const Difference found = difference(shown, readPng(reference), masks);
    if (found.pixels == 0)
        return;
    const std::string now = name + "-now.png";
    writePng(now, shown);
    ADD_FAILURE() << found.pixels << " pixels differ between " << found.area.left << ", "
                  << found.area.top << " and " << found.area.right << ", " << found.area.bottom
                  << "; compare " << now << " with " << reference;
}
