// What the screen shows, and what is painted when.
#include "RecordingFrame.h"
#include "TestHost.h"
#include "vstgui/vstgui.h"

#include "vstgui/platform/iplatformsurface.h"

#include <gtest/gtest.h>

using namespace VSTGUI;

namespace {

void drawScene(CDrawContext* context, const CRect&)
{
    const auto picture = owned(new CBitmap(CResourceDescription(10016)));
    context->resetClipRect();
    context->setFillColor(CColor(40, 60, 80));
    context->drawRect(CRect(0, 0, 200, 150), kDrawFilled);
    context->setFrameColor(kYellowCColor);
    context->drawRect(CRect(0, 0, 200, 150));
    context->setFillColor(CColor(255, 0, 0, 128));
    context->drawRect(CRect(10.5, 10, 60, 40), kDrawFilled);
    for (int i = 0; i < 6; ++i)
        picture->draw(context, CRect(80, 10 + 4 * i, 84, 13 + 4 * i), CPoint(0, 0), 1.f);
    context->setFont(kNormalFontBig);
    context->setFontColor(kWhiteCColor);
    context->drawString("H\303\266rt", CRect(0, 60, 200, 100));
    context->drawString("sharp", CRect(0, 100, 200, 140), kCenterText, false);
}

Pixels offscreen(int width, int height,
                 const std::function<void(CDrawContext*, const CRect&)>& draw)
{
    const auto surface = owned(IPlatformSurface::create(width, height));
    const auto context = owned(new CDrawContext(surface));
    draw(context, CRect(0, 0, width, height));
    return surface->readPixels();
}

int differences(const Pixels& screen, const Pixels& expected)
{
    int count = 0;
    for (int y = 0; y < expected.height; ++y) {
        for (int x = 0; x < expected.width; ++x)
            count += screen.at(x, y) != expected.at(x, y);
    }
    return count;
}

}  // namespace

TEST(Paint, ScreenShowsExactlyWhatTheOffscreenSurfaceHolds)
{
    TestHost host;
    RecordingFrame frame(host.handle());
    frame.onDraw = drawScene;
    frame->invalidRect(CRect(0, 0, 200, 150));
    pump(200);
    const Pixels screen = host.screenshot();
    const Pixels expected = offscreen(200, 150, drawScene);
    EXPECT_EQ(differences(screen, expected), 0);
    EXPECT_EQ(screen.at(200, 100), kWhiteCColor);  // the host's own
    EXPECT_EQ(expected.at(82, 10), kBlueCColor);
    // Text has left something of its colour.
    int white = 0;
    for (int x = 0; x < 200; ++x)
        white += screen.at(x, 80) == kWhiteCColor;
    EXPECT_GT(white, 0);
}

TEST(Paint, OnlyRectanglesThatWaitArePaintedEachForItself)
{
    TestHost host;
    RecordingFrame frame(host.handle());
    pump();
    frame.drawn.clear();
    EXPECT_TRUE(frame->invalidRect(CRect(10.2, 10.9, 20.1, 20.2)));
    EXPECT_TRUE(frame->invalidRect(CRect(100, 100, 110, 110)));
    EXPECT_FALSE(frame->invalidRect(CRect(50, 50, 50, 60)));
    frame.onDraw = [&](CDrawContext*, const CRect&) {
        EXPECT_FALSE(frame->invalidRect(CRect(0, 0, 1, 1)));  // would never end
    };
    pump();
    EXPECT_EQ(frame.drawn, (std::vector<CRect>{{10, 10, 21, 21}, {100, 100, 110, 110}}));
}

TEST(Paint, NewSizeIsPaintedWholeAndReported)
{
    TestHost host;
    RecordingFrame frame(host.handle());
    frame.onDraw = [](CDrawContext* context, const CRect& rect) {
        context->setFillColor(kGreenCColor);
        context->drawRect(rect, kDrawFilled);
    };
    pump();
    frame.drawn.clear();
    EXPECT_TRUE(frame->setSize(CRect(0, 0, 260, 170)));
    pump();
    CRect size;
    EXPECT_TRUE(frame->getSize(size));
    EXPECT_EQ(size, CRect(0, 0, 260, 170));
    EXPECT_EQ(frame.drawn, std::vector<CRect>{CRect(0, 0, 260, 170)});
    EXPECT_EQ(host.screenshot().at(259, 169), kGreenCColor);
    CPoint position;
    EXPECT_TRUE(frame->getGlobalPosition(position));
    EXPECT_EQ(position, CPoint(kHostX, kHostY));
}

TEST(Paint, FrameMayCloseWhilePainting)
{
    TestHost host;
    RecordingFrame frame(host.handle());
    frame.onDraw = [&](CDrawContext*, const CRect&) { frame.close(); };
    pump();
    EXPECT_EQ(GetWindow(host.handle(), GW_CHILD), nullptr);
    EXPECT_EQ(frame.drawn.size(), 1u);
}

TEST(Picture, ComesFromTheModulesResourcesWhateverResolutionItClaims)
{
    const auto bitmap = owned(new CBitmap(CResourceDescription(10016)));
    ASSERT_TRUE(bitmap->isLoaded());
    EXPECT_EQ(bitmap->getWidth(), 4);
    EXPECT_EQ(bitmap->getHeight(), 3);
    const Pixels p = offscreen(10, 10, [&](CDrawContext* context, const CRect& all) {
        context->setFillColor(kWhiteCColor);
        context->drawRect(all, kDrawFilled);
        bitmap->draw(context, CRect(0, 0, 4, 3));
        bitmap->draw(context, CRect(5, 0, 7, 1), CPoint(1, 0), 0.5f);
    });
    EXPECT_EQ(p.at(0, 0), kRedCColor);
    EXPECT_EQ(p.at(3, 0), kWhiteCColor);
    // 200 * 128 / 255 + 255 * 127 / 255 = 100.4 + 127 and so on.
    EXPECT_NEAR(p.at(0, 1).red, 227, 1);
    EXPECT_NEAR(p.at(0, 1).green, 177, 1);
    EXPECT_NEAR(p.at(0, 1).blue, 152, 1);
    EXPECT_EQ(p.at(0, 2), kWhiteCColor);
    EXPECT_EQ(p.at(4, 0), kWhiteCColor);
    EXPECT_NEAR(p.at(5, 0).red, 127, 1);  // green, half
    EXPECT_EQ(p.at(5, 0).green, 255);
    EXPECT_EQ(p.at(7, 0), kWhiteCColor);
}
