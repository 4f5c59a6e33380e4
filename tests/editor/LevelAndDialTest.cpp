// The level knobs with their law, and the high-pass dial that goes round.
#include "CAnimDriveKnob.h"
#include "CAnimFreqKnob.h"
#include "ControlStage.h"

using namespace VSTGUI;

namespace {

// Both 112 by 112 with a picture of 82 by 82, as on the pre-amplifier: centre (63, 85).
const CRect kRect(7, 29, 119, 141);
const CPoint kCentre(63, 85);

struct LevelKnob : ControlStage {
    LevelKnob()
        : knob(add(new CAnimDriveKnob(kRect, &listener, 8, 101, 82, filmstrip(82, 82, 101),
                                      CPoint(0, 0), 15)))
    {
        knob->setDefaultValue(0.5f);
        knob->setInnerRadius(21);
    }
    CAnimDriveKnob* knob;
};

TEST_F(LevelKnob, LawAgreesWithItsQuarticsAndMirrorsAtTheMiddle)
{
    // Worked in double precision.
    const struct {
        float x, position, value;
    } rows[] = {
        {0.51f, 0.523651f, 0.505599f}, {0.6f, 0.684239f, 0.549522f}, {0.75f, 0.829992f, 0.656646f},
        {0.9f, 0.933637f, 0.849736f},  {1.0f, 1.0f, 1.00005f},
    };
    for (const auto& row : rows) {
        EXPECT_NEAR(knob->positionFromValue(row.x), row.position, 2e-6) << row.x;
        EXPECT_NEAR(knob->valueFromPosition(row.x), row.value, 2e-6) << row.x;
        EXPECT_NEAR(knob->positionFromValue(1 - row.x), 1 - row.position, 3e-6) << row.x;
        EXPECT_NEAR(knob->valueFromPosition(1 - row.x), 1 - row.value, 3e-6) << row.x;
    }
    EXPECT_NEAR(knob->positionFromValue(0.5f), 0.5, 1e-5);
    EXPECT_NEAR(knob->valueFromPosition(0.5f), 0.5, 1e-6);
    knob->setValue(0.9f);
    EXPECT_NEAR(knob->getValue(), 0.900866, 3e-6);  // not an exact inverse
}

TEST_F(LevelKnob, FramesAndDragsAreOfThePosition)
{
    knob->setValue(1);
    EXPECT_EQ(shownFrame(40, 60), 100);
    knob->setValue(0);
    EXPECT_EQ(shownFrame(40, 60), 0);
    knob->setValue(0.6f);
    EXPECT_EQ(shownFrame(40, 60), 68);
    knob->setValue(0.5f);
    press(kCentre);
    drag(kCentre - CPoint(0, 50));
    EXPECT_EQ(shownFrame(40, 60), 75);
    EXPECT_NEAR(knob->getValue(), 0.656646, 1e-4);
    release(kCentre);
    listener.heard();
    wheel(kCentre, 1);  // 0.01 of the position
    EXPECT_EQ(shownFrame(40, 60), 76);
    EXPECT_EQ(listener.heard().size(), 3u);
    wheel(kCentre, 1, kShift | kControl);
    EXPECT_TRUE(knob->getCtrlHeld());
}

TEST_F(LevelKnob, OuterPictureNeverTurns)
{
    knob->setBackground(nullptr);
    knob->setOuterBitmap(filmstrip(82, 82, 3), 3);
    for (const float value2 : {0.f, 1.f}) {
        knob->setValue2(value2);
        knob->setDirty();
        EXPECT_EQ(shownFrame(40, 60), 0);
    }
}

TEST_F(LevelKnob, ControlNeverResetsADoubleClickDoes)
{
    knob->setValue(0.9f);
    press(kCentre, kLButton | kControl);
    EXPECT_TRUE(knob->getCtrlHeld());
    release(kCentre);
    EXPECT_NEAR(knob->getValue(), 0.900866, 3e-6);
    listener.heard();
    press(kCentre, kLButton | kDoubleClick);
    EXPECT_FALSE(knob->getCtrlHeld());
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change 0.5", "end"}));
    EXPECT_NEAR(knob->getValue(), 0.5, 1e-6);
}

// A point inside each label, from the view's corner; step 0 is off.
const CPoint kOnLabel[12] = {{55, 10}, {85, 20}, {100, 40}, {100, 58}, {95, 78}, {85, 95},
                             {55, 95}, {28, 95}, {18, 75},  {12, 56},  {15, 40}, {25, 22}};

struct HighPassDial : ControlStage {
    HighPassDial()
        : dial(add(new CAnimFreqKnob(kRect, &listener, 10, 12, 82, filmstrip(82, 82, 12),
                                     CPoint(0, 0), 15)))
    {
        dial->setOverlayBitmap(paintedBitmap(112, 112, [](int32_t x, int32_t y) {
            return CColor(200, static_cast<uint8_t>(x), static_cast<uint8_t>(y), 255);
        }));
        dial->setValue(0);
        dial->setDefaultValue(0);
        dial->setInnerRadius(50);
        dial->setWheelStep(1.f / 12.f);
        dial->setWheelFine(1);
        dial->setFineFactor(1);
        dial->setDragRange(1.f / 120.f);
    }
    CPoint inView(CPoint p) const { return p + kRect.getTopLeft(); }
    // The value is exactly that of a step.
    int step() const
    {
        const int nearest = static_cast<int>(dial->getValue() * 11 + 0.5f);
        EXPECT_NEAR(dial->getValue(), nearest / 11.0, 1e-7);
        return nearest;
    }
    bool isLit(CPoint p)
    {
        return seen(static_cast<int>(p.x) + 7, static_cast<int>(p.y) + 29)
            == CColor(200, static_cast<uint8_t>(p.x), static_cast<uint8_t>(p.y), 255);
    }
    CAnimFreqKnob* dial;
};

TEST_F(HighPassDial, ClickOnALabelSetsItsStepInOneGesture)
{
    for (int hit = 11; hit >= 0; --hit) {
        SCOPED_TRACE(hit);
        EXPECT_EQ(press(inView(kOnLabel[hit])), kMouseDownEventHandledButDontNeedMovedOrUpEvents);
        EXPECT_EQ(step(), hit);
        EXPECT_EQ(listener.heard().size(), 3u);
        EXPECT_EQ(shownFrame(63, 85), hit);
        for (int label = 0; label < 12; ++label)
            EXPECT_EQ(isLit(kOnLabel[label]), label == hit) << label;
    }
}

TEST_F(HighPassDial, WhereLabelsShareARowTheLaterOneWins)
{
    click(inView({10, 48}));  // in 9 and in 10
    EXPECT_EQ(step(), 10);
    click(inView({100, 48}));  // below the edge between 2 and 3
    EXPECT_EQ(step(), 3);
    click(inView({100, 47}));
    EXPECT_EQ(step(), 2);
}

TEST_F(HighPassDial, WheelGoesRoundBothWays)
{
    for (int notch = 1; notch <= 12; ++notch) {
        wheel(kCentre, 1, notch % 2 ? kShift : 0);  // as coarse with Shift
        EXPECT_EQ(step(), notch % 12);
    }
    EXPECT_EQ(listener.heard().size(), 36u);
    for (int notch = 1; notch <= 12; ++notch) {
        wheel(kCentre, -1);
        EXPECT_EQ(step(), (12 - notch) % 12);
    }
}

TEST_F(HighPassDial, DragStepsAndWrapsFromTheLastToTheFirst)
{
    press(kCentre);
    drag(kCentre - CPoint(0, 5));  // 5/120 * 11 = 0.46
    EXPECT_EQ(step(), 0);
    drag(kCentre - CPoint(0, 6));
    EXPECT_EQ(step(), 1);
    drag(kCentre - CPoint(0, 120), kLButton | kShift);
    EXPECT_EQ(step(), 11);
    drag(kCentre - CPoint(0, 122));  // 1.0167 - 1.0909 is below 0
    EXPECT_EQ(step(), 0);
    drag(kCentre - CPoint(0, 144));  // 1.2 - 1.0909 = 0.109
    EXPECT_EQ(step(), 1);
    release(kCentre);
    press(kCentre);
    drag(kCentre + CPoint(0, 12));  // 0.0909 - 0.1 + 1.0909 is above 1
    EXPECT_EQ(step(), 11);
    release(kCentre);
    EXPECT_EQ(listener.heard().back(), "end");
}

TEST_F(HighPassDial, IsOneKnobAllOver)
{
    dial->setValue(5 / 11.f);
    const CPoint corner = inView({3, 3});  // 75 from the centre, on no label
    press(corner);
    EXPECT_EQ(step(), 5);
    drag(corner - CPoint(0, 11));
    EXPECT_EQ(step(), 6);
    release(corner);
    wheel(corner, 1);
    EXPECT_EQ(step(), 7);
    EXPECT_FALSE(dial->getRingIsOuter());
    click(corner, kLButton | kDoubleClick);
    EXPECT_EQ(step(), 0);
}

TEST_F(HighPassDial, ClickOnOffSwitchesBackToTheLastStep)
{
    click(inView(kOnLabel[0]));
    EXPECT_EQ(step(), 0);
    click(inView(kOnLabel[3]));
    click(inView(kOnLabel[0]), kLButton | kControl);
    EXPECT_TRUE(dial->getCtrlHeld());
    EXPECT_EQ(step(), 0);
    click(inView(kOnLabel[0]));
    EXPECT_EQ(step(), 3);
    wheel(kCentre, 1);
    for (int i = 0; i < 4; ++i)
        wheel(kCentre, -1);
    click(inView(kOnLabel[0]));
    EXPECT_EQ(step(), 1);
}

}  // namespace
