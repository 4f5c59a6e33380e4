// Pixels: order, clipping, transparency, bitmaps and text.
#include "Probe.h"

namespace {

class Drawing : public FrameTest {
protected:
    // Paints with a function, all over the frame, and returns the frame's picture.
    Pixels drawn(std::function<void(CDrawContext&)> paint)
    {
        addProbe(kAll, "painter")->onDraw = std::move(paint);
        return host.paint();
    }

    const CRect kAll{0, 0, 200, 100};
};

CRect textBounds(const Pixels& picture, const CColor& background)
{
    CRect bounds(picture.width, picture.height, 0, 0);
    for (int32_t y = 0; y < picture.height; ++y) {
        for (int32_t x = 0; x < picture.width; ++x) {
            if (picture.at(x, y) != background)
                bounds.unite(CRect(x, y, x + 1, y + 1));
        }
    }
    return bounds;
}

TEST_F(Drawing, FilledRectanglesCoverExactlyTheirPixelsAndStrokesTheInnerBorder)
{
    const Pixels p = drawn([](CDrawContext& c) {
        c.setFillColor(kRedCColor);
        c.drawRect(CRect(20, 20, 10, 10), kDrawFilled);  // turned round
        c.setFrameColor(kBlueCColor);
        c.drawRect(CRect(30, 10, 40, 20), kDrawStroked);
    });
    EXPECT_EQ(p.at(10, 10), kRedCColor);
    EXPECT_EQ(p.at(19, 19), kRedCColor);
    EXPECT_EQ(p.at(20, 19), kGreyCColor);
    EXPECT_EQ(p.at(9, 10), kGreyCColor);
    EXPECT_EQ(p.at(30, 10), kBlueCColor);
    EXPECT_EQ(p.at(39, 19), kBlueCColor);
    EXPECT_EQ(p.at(38, 18), kGreyCColor);
    EXPECT_EQ(p.at(40, 10), kGreyCColor);
}

TEST_F(Drawing, ColoursAndGlobalAlphaMixOverWhatIsThere)
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

TEST_F(Drawing, OnlyTheInvalidAreaIsPaintedWithEverythingThatTouchesIt)
{
    auto* panel = new CViewContainer(CRect(0, 0, 200, 100));
    panel->setBackgroundColor(CColor(255, 255, 255, 128));
    frame->addView(panel);
    const CColor once = host.paint().at(10, 10);
    frame->invalidRect(CRect(10, 10, 20, 20));
    const Pixels p = host.paint();
    // Painted twice over itself it would be brighter.
    EXPECT_EQ(p.at(10, 10), once);
    EXPECT_EQ(p.at(50, 50), once);
}

TEST_F(Drawing, BitmapsAreCopiedUnscaledFromTheirOffsetAndNeverBeyondTheirEdges)
{
    const auto strip = owned(filmstrip(9001, 3));
    EXPECT_EQ(strip->getHeight(), 30);
    const Pixels p = drawn([&](CDrawContext& c) {
        strip->draw(&c, CRect(0, 0, 10, 10), CPoint(0, 10));
        strip->draw(&c, CRect(20, 0, 40, 40), CPoint(0, 20));  // larger than what is left
        strip->draw(&c, CRect(50, 0, 60, 10), CPoint(-5, -5));
        strip->draw(&c, CRect(70.9, 0.9, 80.9, 10.9));  // whole pixels
        strip->draw(&c, CRect(90, 0, 100, 10), CPoint(0, 20), 0.5f);
        strip->draw(&c, CRect(110, 0, 120, 10), CPoint(0, 20), 0.f);
    });
    EXPECT_EQ(frameShownAt(p, 0, 0), 1);
    EXPECT_EQ(frameShownAt(p, 20, 0), 2);
    EXPECT_EQ(p.at(25, 10), kGreyCColor);
    EXPECT_EQ(p.at(30, 5), kGreyCColor);
    EXPECT_EQ(p.at(54, 4), kGreyCColor);
    EXPECT_EQ(p.at(55, 5), kGreenCColor);
    EXPECT_EQ(frameShownAt(p, 70, 0), 0);
    EXPECT_NEAR(p.at(95, 5).red, (20 + 127) / 2, 1);
    EXPECT_EQ(p.at(115, 5), kGreyCColor);
}

TEST_F(Drawing, TextIsCentredByTheHeightOfCapitals)
{
    const Pixels p = drawn([this](CDrawContext& c) {
        c.setFont(kNormalFontVeryBig);
        c.setFontColor(kBlackCColor);
        EXPECT_GT(c.getStringWidth("HHHH"), 40);
        c.drawString("HHHH", kAll, kCenterText);
    });
    const CRect ink = textBounds(p, kGreyCColor);
    EXPECT_NEAR(ink.getCenter().x, 100, 1);
    EXPECT_NEAR(ink.getCenter().y, 50, 1);
    // Capitals of 18 pixel type are about 0.72 em high.
    EXPECT_NEAR(ink.getHeight(), 13, 1);
}

TEST_F(Drawing, TextKeepsToItsEdgeAndToTheClipOfALabel)
{
    auto* label = new CTextLabel(CRect(100, 10, 150, 30), "MMMMMMMMMMMMMMMM");
    label->setBackColor(kGreyCColor);
    label->setFrameColor(kTransparentCColor);
    label->setFontColor(kBlackCColor);
    label->setHoriAlign(kLeftText);
    label->setTextInset(CPoint(5, 0));
    frame->addView(label);
    CRect ink = textBounds(host.paint(), kGreyCColor);
    EXPECT_NEAR(ink.left, 106, 1);
    EXPECT_LE(ink.right, 145);
    EXPECT_GE(ink.right, 143);
    label->setText("M");
    label->setHoriAlign(kRightText);
    label->invalid();
    ink = textBounds(host.paint(), kGreyCColor);
    EXPECT_NEAR(ink.right, 144, 1);
}

TEST_F(Drawing, TextThatIsNoUtf8DoesNotSpoilWhatFollows)
{
    const Pixels p = drawn([](CDrawContext& c) {
        c.setFont(kNormalFont);
        c.drawString("\xFF\xC3(\xE2\x82", CRect(0, 50, 200, 100));
        c.drawString(static_cast<UTF8StringPtr>(nullptr), CRect(0, 50, 200, 100));
        c.setFontColor(kRedCColor);
        c.drawString("HH", CRect(0, 0, 200, 50));
    });
    int red = 0;
    for (int32_t x = 0; x < 200; ++x)
        red += p.at(x, 25).red > 200 && p.at(x, 25).blue < 60 ? 1 : 0;
    EXPECT_GT(red, 2);
}

TEST_F(Drawing, ABackgroundPieceTakesThePlaceOfColourAndFrame)
{
    auto* label = new CTextLabel(CRect(0, 0, 10, 10), "");
    frame->addView(label);
    label->setFrameColor(kBlueCColor);
    label->setBackColor(kRedCColor);
    EXPECT_EQ(host.paint().at(0, 0), kBlueCColor);
    EXPECT_EQ(host.paint().at(5, 5), kRedCColor);
    const auto strip = owned(filmstrip(9002, 3));
    label->setBackground(strip);
    label->setBackOffset(CPoint(0, 20));
    label->invalid();
    EXPECT_EQ(frameShownAt(host.paint(), 0, 0), 2);
}

}  // namespace
