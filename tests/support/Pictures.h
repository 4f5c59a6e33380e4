// Comparing what is shown with reference pictures. They serve both systems, whose letters differ a
// little. With ZKR_RENEW_PICTURES set, what is shown becomes the reference.
#pragma once

#include "vstgui/platform/iplatformbitmap.h"
#include "vstgui/platform/iplatformsurface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// Empty when there is no such file.
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

// Where they differ most: the share of pixels of a small square that differ visibly in any channel.
// 1 when the sizes differ.
inline double difference(const VSTGUI::Pixels& a, const VSTGUI::Pixels& b)
{
    constexpr int kVisible = 24;  // of 255
    constexpr int kSide = 16;
    if (a.width != b.width || a.height != b.height || a.rgba.empty())
        return 1.0;
    const int columns = (a.width + kSide - 1) / kSide, rows = (a.height + kSide - 1) / kSide;
    std::vector<int> different(static_cast<std::size_t>(columns * rows));
    for (int y = 0; y < a.height; ++y)
        for (int x = 0; x < a.width; ++x) {
            const VSTGUI::CColor p = a.at(x, y), q = b.at(x, y);
            if (std::abs(p.red - q.red) > kVisible || std::abs(p.green - q.green) > kVisible
                || std::abs(p.blue - q.blue) > kVisible)
                ++different[static_cast<std::size_t>(y / kSide * columns + x / kSide)];
        }
    return *std::max_element(different.begin(), different.end()) / double(kSide * kSide);
}

inline std::string picturePath(const std::string& name)
{
    return std::string(ZKR_PICTURES) + "/" + name + ".png";
}

inline bool looksLike(const VSTGUI::Pixels& shown, const std::string& name,
                      double mostDifferent = 0.2)
{
    return difference(shown, readPng(picturePath(name))) <= mostDifferent;
}

inline void expectPicture(const VSTGUI::Pixels& shown, const std::string& name,
                          double mostDifferent = 0.2)
{
    const std::string reference = picturePath(name);
    if (std::getenv("ZKR_RENEW_PICTURES")) {
        ASSERT_TRUE(VSTGUI::writePng(reference, shown)) << reference;
    }
    const double worst = difference(shown, readPng(reference));
    const std::string now = name + "-now.png";
    if (worst > mostDifferent)
        VSTGUI::writePng(now, shown);
    EXPECT_LE(worst, mostDifferent) << "compare " << now << " with " << reference;
}
