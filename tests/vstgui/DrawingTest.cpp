// Pixels: order, clipping, transparency, bitmaps and text.
#include "tests/vstgui/Probe.h"

#include "vstgui/platform/iplatformfont.h"

#include <set>

namespace {

class Drawing : public FrameTest {
protected:
    // Returns the frame's picture after `paint` has drawn over it.
    Pixels drawn(std::function<void(CDrawContext&)> paint)
    {
        addProbe("painter", kAll)->onDraw = std::move(paint);
        return host.paint();
    }

    const CRect kAll{0, 0, 200, 100};
};

TEST_F(Drawing, FilledRectanglesCoverExactlyTheirPixelsAndStrokesTheInnerBorder)
{
    const Pixels p = drawn([](CDrawContext& c) {
        c.setFillColor(kRedCColor);
        c.drawRect(CRect(20, 20, 10, 10), kDrawFilled);  // edges swapped
        c.setFrameColor(kBlueCColor);
        c.drawRect(CRect(30, 10, 40, 20), kDrawStroked);
    });
    const std::pair<CPoint, CColor> pixels[] = {
        {{10, 10}, kRedCColor},  {{19, 19}, kRedCColor},  {{20, 19}, kGreyCColor},
        {{9, 10}, kGreyCColor},  {{30, 10}, kBlueCColor}, {{39, 15}, kBlueCColor},
        {{38, 18}, kGreyCColor}, {{40, 10}, kGreyCColor}, {{40, 15}, kGreyCColor}};
    for (const auto& [at, colour] : pixels)
        EXPECT_EQ(p.at(static_cast<int>(at.x), static_cast<int>(at.y)), colour)
            << at.x << ',' << at.y;
}

TEST_F(Drawing, ColoursAndGlobalAlphaBlendOverTheBackground)
{
    const Pixels p = drawn([this](CDrawContext& c) {
        c.setFillColor(kBlackCColor);
        c.drawRect(kAll, kDrawFilled);
        c.setFillColor(CColor(200, 100, 0, 128));
        c.drawRect(CRect(0, 0, 10, 10), kDrawFilled);
        c.saveGlobalState();
        c.setGlobalAlpha(0.5f);
        c.drawRect(CRect(10, 0, 20, 10), kDrawFilled);
        c.restoreGlobalState();
        c.drawRect(CRect(20, 0, 30, 10), kDrawFilled);
    });
    // 200 * 128 / 255 = 100.4, and half of it.
    EXPECT_NEAR(p.at(5, 5).red, 100, 1);
    EXPECT_NEAR(p.at(5, 5).green, 50, 1);
    EXPECT_NEAR(p.at(15, 5).red, 50, 1);
    EXPECT_NEAR(p.at(25, 5).red, 100, 1);
    EXPECT_EQ(p.at(5, 5).alpha, 255);
}

TEST_F(Drawing, ChildrenAreDrawnInTheirContainersCoordinatesCutToItAndInOrder)
{
    const auto container = [](const CRect& rect, CColor colour) {
        auto* const made = new CViewContainer(rect);
        made->setBackgroundColor(colour);
        return made;
    };
    auto* const box = container(CRect(100, 50, 140, 90), kBlueCColor);
    auto* const high = container(CRect(10, 10, 60, 20), kGreenCColor);
    high->setAlphaValue(0.5f);
    box->addView(container(CRect(-20, 10, 20, 30), kRedCColor));
    box->addView(high);
    frame->addView(box);
    const Pixels p = host.paint();
    EXPECT_EQ(p.at(99, 65), kGreyCColor);
    EXPECT_EQ(p.at(100, 65), kRedCColor);
    EXPECT_EQ(p.at(100, 59), kBlueCColor);
    EXPECT_NEAR(p.at(115, 65).red, 127, 1);
    EXPECT_NEAR(p.at(115, 65).green, 127, 1);
    EXPECT_NEAR(p.at(139, 65).blue, 127, 1);
    EXPECT_EQ(p.at(140, 65), kGreyCColor);
}

TEST_F(Drawing, BitmapsAreCopiedUnscaledFromTheirOffsetAndNeverBeyondTheirEdges)
{
    const auto strip = owned(filmstrip(9001, 3));
    const Pixels p = drawn([&](CDrawContext& c) {
        strip->draw(&c, CRect(0, 0, 10, 10), CPoint(0, 10));
        strip->draw(&c, CRect(20, 0, 40, 40), CPoint(0, 20));  // reaches beyond the bitmap
        strip->draw(&c, CRect(50, 0, 60, 10), CPoint(-5, -5));
        strip->draw(&c, CRect(70.9, 0.9, 80.9, 10.9));  // drawn at whole pixels
        strip->draw(&c, CRect(90, 0, 100, 10), CPoint(0, 20), 0.5f);
        strip->draw(&c, CRect(110, 0, 120, 10), CPoint(0, 20), 0.f);
    });
    // The frame of the strip at x; -1 for none.
    const auto frameAt = [&](int x) {
        return p.at(x, 0) == kGreenCColor && p.at(x + 5, 5).blue == 0 ? p.at(x + 5, 5).red / 10
                                                                      : -1;
    };
    EXPECT_EQ(frameAt(0), 1);
    EXPECT_EQ(frameAt(20), 2);
    EXPECT_EQ(p.at(25, 10), kGreyCColor);
    EXPECT_EQ(p.at(30, 5), kGreyCColor);
    EXPECT_EQ(p.at(54, 4), kGreyCColor);
    EXPECT_EQ(p.at(55, 5), kGreenCColor);
    EXPECT_EQ(frameAt(70), 0);
    EXPECT_NEAR(p.at(95, 5).red, (20 + 127) / 2, 1);
    EXPECT_EQ(p.at(115, 5), kGreyCColor);
}

TEST_F(Drawing, TextTooWideForItsPlaceIsShownFromItsStartWithAnEllipsis)
{
    const auto width = [](const std::string& text) {
        return kNormalFont->getPlatformFont()->getStringWidth(text.c_str());
    };
    const auto fitted = [](UTF8StringPtr text, CCoord room) {
        return CDrawMethods::createTruncatedText(text, kNormalFont, room);
    };
    const std::string name = "B\u00f6xk\u00e4mpfer on", cut = "B\u00f6xk\u00e4\u2026";
    EXPECT_EQ(fitted(name.c_str(), width(name)), name);
    EXPECT_EQ(fitted(name.c_str(), width(cut)), cut);
    EXPECT_EQ(fitted(name.c_str(), width("B\u00f6xk\u00e4mpfer \u2026")),
              "B\u00f6xk\u00e4mpfer\u2026");
    EXPECT_EQ(fitted(name.c_str(), 0.), "\u2026");
    EXPECT_EQ(fitted("a\u01c4beyond", width("a\u01c4\u2026") - 1.), "a\u2026");
    EXPECT_EQ(fitted("", 0.), "");
    EXPECT_EQ(fitted(nullptr, 9.), "");
}

TEST_F(Drawing, TextIsSmoothClippedAndBlendedAndInvalidUtf8DoesNotAffectIt)
{
    const Pixels p = drawn([](CDrawContext& c) {
        c.setFont(kNormalFont);
        c.drawString("\xFF\xC3(\xE2\x82", CRect(0, 50, 200, 100));
        c.drawString(static_cast<UTF8StringPtr>(nullptr), CRect(0, 50, 200, 100));
        c.setFontColor(kBlackCColor);
        c.drawString("HW", CRect(0, 0, 70, 50));
        c.setGlobalAlpha(0.5f);
        c.setClipRect(CRect(70, 0, 105, 50));
        c.drawString("HW", CRect(70, 0, 140, 50));
    });
    constexpr int kLeft[] = {0, 70, 105, 140};
    std::set<int> shades[3];
    for (int i = 0; i < 3; ++i)
        for (int y = 0; y < 50; ++y)
            for (int x = kLeft[i]; x < kLeft[i + 1]; ++x)
                shades[i].insert(p.at(x, y).red);
    EXPECT_LT(*shades[0].begin(), kGreyCColor.red / 3);
    EXPECT_GT(shades[0].size(), 2u) << "not smooth";
    EXPECT_GT(*shades[1].begin(), kGreyCColor.red / 3) << "not half transparent";
    EXPECT_GT(shades[1].size(), 2u) << "nothing drawn";
    EXPECT_EQ(shades[2], (std::set<int>{kGreyCColor.red})) << "not clipped";
}

}  // namespace
