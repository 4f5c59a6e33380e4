// Bitmaps by resource number, and damaged bitmaps.
#include "tests/vstgui/Probe.h"

namespace {

TEST(Resources, AMissingOrDamagedPictureIsUnloadedAndDrawsNothing)
{
    const auto missing = owned(new CBitmap(CResourceDescription(4711)));
    EXPECT_FALSE(missing->isLoaded());
    EXPECT_EQ(missing->getWidth(), 0);
    const auto named = owned(new CBitmap(CResourceDescription("no-such-picture.png")));
    EXPECT_FALSE(named->isLoaded());

    Pixels picture(7, 5);
    picture.set(3, 2, CColor(10, 20, 30, 40));
    const std::vector<uint8_t> png = encodePng(picture);
    for (size_t length = 0; length < png.size() - 12; ++length) {
        // A copy of exactly that length, so that the sanitizer sees a read beyond its end.
        const std::vector<uint8_t> cut(png.begin(), png.begin() + static_cast<long>(length));
        const EmbeddedBitmap entry{4712, cut.data(), cut.size()};
        registerBitmaps(&entry, 1);
        const auto bitmap = owned(new CBitmap(CResourceDescription(4712)));
        EXPECT_FALSE(bitmap->isLoaded()) << length;
    }
    const EmbeddedBitmap whole{4712, png.data(), png.size()};
    registerBitmaps(&whole, 1);
    const auto bitmap = owned(new CBitmap(CResourceDescription(4712)));
    ASSERT_TRUE(bitmap->isLoaded());
    EXPECT_EQ(bitmap->getWidth(), 7);
    EXPECT_EQ(bitmap->getHeight(), 5);
}

TEST(Resources, ABitmapIsSharedAndReleasedByItsLastUser)
{
    auto* first = filmstrip(4713, 2);
    const auto second = owned(new CBitmap(CResourceDescription(4713)));
    EXPECT_EQ(first->getPlatformBitmap(), second->getPlatformBitmap());
    first->forget();
    EXPECT_TRUE(second->isLoaded());
    const auto replaced = owned(filmstrip(4713, 3));
    EXPECT_EQ(replaced->getHeight(), 30);
    EXPECT_EQ(second->getHeight(), 20);
}

}  // namespace
