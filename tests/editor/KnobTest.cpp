// The knobs: what mouse and wheel do to a knob and a ring on one axis, the laws of the gains, and
// the stepped rings and dials with their labels.
#include "CAnimCoaxT46CustomKnob.h"
#include "CAnimDriveKnob.h"
#include "CAnimFreqKnob.h"
#include "ControlStage.h"

using namespace VSTGUI;

namespace {

// The picture is 71 by 71 at (45, 32): centre (80.5, 67.5).
struct CoaxialKnob : ControlStage {
    CoaxialKnob()
        : knob(new CAnimCoaxT46Knob(CRect(20, 20, 141, 121), &listener, 28, 129, 71, nullptr,
                                    CPoint(0, 0), 25, 12, 25, 18))
    {
        knob->setOuterBitmap(filmstrip(71, 71, 24), 24);
        knob->setInnerRadius(21);
        knob->setValue(0.5f);
        knob->setDefaultValue(0.25f);
        knob->setValue2(0.5f);
        knob->setDefaultValue2(0.75f);
        add(knob);
    }

    const CPoint inner{80.5, 67.5};
    const CPoint ring{80.5, 37.5};
    CAnimCoaxT46Knob* knob;
};

TEST_F(CoaxialKnob, APointAtTheRadiusIsOnTheInnerKnob)
{
    const struct {
        CPoint where;
        bool ring;
    } rows[] = {
        {{80.5, 67.5}, false}, {{101.5, 67.5}, false},  // 21 to the right
        {{101.6, 67.5}, true}, {{80.5, 46.5}, false},   // 21 up
        {{95.5, 82.5}, true},  {{95.3, 82.3}, false},   // 21.2 and 20.9 down to the right
        {{20, 20}, true},
    };
    for (const auto& row : rows) {
        click(row.where);
        EXPECT_EQ(knob->getRingIsOuter(), row.ring) << row.where.x << ", " << row.where.y;
    }
}

TEST_F(CoaxialKnob, DragTellsTheListenerTwiceForEachMoveInOneGesture)
{
    EXPECT_EQ(press(inner), kMouseEventHandled);
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change 0.5", "change 0.5"}));
    EXPECT_EQ(drag(inner - CPoint(0, 10)), kMouseEventHandled);
    EXPECT_EQ(listener.heard(), (Calls{"change 0.5", "change 0.55"}));
    release(inner);
    EXPECT_EQ(listener.heard(), (Calls{"end"}));
    drag(inner - CPoint(0, 20), 0);
    EXPECT_EQ(press(inner, kRButton), kMouseEventNotHandled);
    EXPECT_EQ(listener.heard(), Calls{});

    press(ring);
    drag(ring - CPoint(0, 10));
    release(ring);
    EXPECT_EQ(listener.heard(),
              (Calls{"begin", "ring 0.5", "ring 0.5", "ring 0.5", "ring 0.6", "end"}));
    EXPECT_FLOAT_EQ(knob->getValue(), 0.55f);
}

TEST_F(CoaxialKnob, APixelUpCountsTwoToTheRightAndFractionsAreCutOff)
{
    const auto after = [&](CCoord right, CCoord up) {
        press(inner);
        drag(inner + CPoint(right, -up));
        const float moved = knob->getValue() - 0.5f;
        drag(inner);
        release(inner);
        EXPECT_FLOAT_EQ(knob->getValue(), 0.5f);
        return moved / 0.005f;  // whole steps of the drag range
    };
    EXPECT_NEAR(after(11, 0), 5, 1e-4);
    EXPECT_NEAR(after(-11, 0), -5, 1e-4);
    EXPECT_NEAR(after(1, 0), 0, 1e-4);  // the dead zone
    EXPECT_NEAR(after(0, 1), 1, 1e-4);
    EXPECT_NEAR(after(1, 1), 1, 1e-4);
    EXPECT_NEAR(after(-2, 1), 0, 1e-4);
}

TEST_F(CoaxialKnob, DragOutsideTheWindowGoesOnAndComesBackFromTheEndStop)
{
    press(inner);
    drag(inner - CPoint(0, 5000));
    EXPECT_EQ(knob->getValue(), 1.f);
    drag(inner - CPoint(0, 60));
    EXPECT_FLOAT_EQ(knob->getValue(), 0.8f);
    drag(inner + CPoint(0, 4000));
    EXPECT_EQ(knob->getValue(), 0.f);
    release(inner + CPoint(0, 4000));
    EXPECT_EQ(listener.heard().back(), "end");
}

TEST_F(CoaxialKnob, ShiftInTheMiddleOfADragDoesNotMakeTheValueJump)
{
    press(inner);
    drag(inner - CPoint(0, 20));
    drag(inner - CPoint(0, 20), kLButton | kShift);
    EXPECT_FLOAT_EQ(knob->getValue(), 0.6f);
    drag(inner - CPoint(0, 40), kLButton | kShift);
    EXPECT_FLOAT_EQ(knob->getValue(), 0.61f);  // 20 pixels of 0.0005
    drag(inner - CPoint(0, 40));
    EXPECT_FLOAT_EQ(knob->getValue(), 0.61f);
    drag(inner - CPoint(0, 42));
    EXPECT_FLOAT_EQ(knob->getValue(), 0.62f);
    release(inner);
    press(ring, kLButton | kShift);
    drag(ring - CPoint(0, 10), kLButton | kShift);
    EXPECT_FLOAT_EQ(knob->getValue2(), 0.51f);
    release(ring);
}

TEST_F(CoaxialKnob, ControlOrDoubleClickResetsAndReportsTheRingOfTheGestureBefore)
{
    for (const int32_t buttons : {kLButton | kControl, kLButton | kDoubleClick}) {
        SCOPED_TRACE(buttons);
        knob->setValue(0.5f);
        knob->setValue2(0.5f);
        click(ring);
        listener.heard();
        EXPECT_EQ(press(inner, buttons), kMouseDownEventHandledButDontNeedMovedOrUpEvents);
        EXPECT_EQ(listener.heard(), (Calls{"begin", "ring 0.5", "end"}));
        EXPECT_EQ(knob->getValue(), 0.25f);
        click(inner);
        press(ring, buttons);
        EXPECT_EQ(knob->getValue2(), 0.75f);
    }
}

TEST_F(CoaxialKnob, WheelMovesTheRingUnderTheMouseByNotches)
{
    const auto turn = [&](CPoint where, float distance, int32_t modifiers) {
        knob->setValue(0.5f);
        knob->setValue2(0.5f);
        EXPECT_TRUE(wheel(where, distance, modifiers));
        return listener.heard();
    };
    EXPECT_EQ(turn(inner, 1, 0), (Calls{"begin", "change 0.51", "end"}));
    EXPECT_EQ(turn(inner, -3, 0), (Calls{"begin", "change 0.49", "end"}));
    EXPECT_EQ(turn(inner, 0.05f, 0), (Calls{"begin", "change 0.5005", "end"}));  // as it is
    EXPECT_EQ(turn(inner, 1, kShift), (Calls{"begin", "change 0.501", "end"}));
    EXPECT_EQ(turn(ring, 0.11f, 0), (Calls{"begin", "ring 0.51", "end"}));
    EXPECT_EQ(turn(ring, -1, kShift), (Calls{"begin", "ring 0.499", "end"}));
    knob->setWheelStep2(2);
    knob->setMax2(0.9f);
    EXPECT_EQ(turn(ring, 1, 0), (Calls{"begin", "ring 0.9", "end"}));
}

// Rows of a law: a knob's value, its position, and the value at a position of that number.
struct LawRow {
    float x, position, value;
};

template <class Knob>
void expectLaw(const Knob& knob, std::initializer_list<LawRow> rows)
{
    for (const LawRow& row : rows) {
        EXPECT_NEAR(knob.positionFromValue(row.x), row.position, 2e-6) << row.x;
        EXPECT_NEAR(knob.valueFromPosition(row.x), row.value, 2e-6) << row.x;
        EXPECT_NEAR(knob.positionFromValue(1 - row.x), 1 - row.position, 3e-6) << row.x;
        EXPECT_NEAR(knob.valueFromPosition(1 - row.x), 1 - row.value, 3e-6) << row.x;
    }
    EXPECT_NEAR(knob.valueFromPosition(0.5f), 0.5, 1e-6);
}

// Controls with labels, each of which lights up in an overlay: a pixel tells where in the picture
// it comes from.
struct Labelled : ControlStage {
    static SharedPointer<CBitmap> litLabels(const CRect& view)
    {
        return paintedBitmap(static_cast<int32_t>(view.getWidth()),
                             static_cast<int32_t>(view.getHeight()), [](int32_t x, int32_t y) {
                                 return CColor(200, static_cast<uint8_t>(x),
                                               static_cast<uint8_t>(y), 255);
                             });
    }
    // Points and their view's corner, where the steps' labels are.
    template <size_t count>
    void expectLit(const CPoint (&labels)[count], CPoint corner, size_t lit)
    {
        for (size_t label = 0; label < count; ++label) {
            const CPoint at = corner + labels[label];
            const CColor shines(200, static_cast<uint8_t>(labels[label].x),
                                static_cast<uint8_t>(labels[label].y), 255);
            EXPECT_EQ(seen(static_cast<int>(at.x), static_cast<int>(at.y)) == shines, label == lit)
                << label;
        }
    }
};

struct BandKnob : Labelled {
    BandKnob()
        : knob(new CAnimCoaxT46CustomKnob(kRect, &listener, 28, 129, 71, nullptr, CPoint(0, 0), 25,
                                          12, 25, 18))
    {
        knob->setOuterBitmap(filmstrip(71, 71, 24), 24);
        knob->setOverlayBitmap(litLabels(kRect));
        knob->setInnerRadius(21);
        knob->setDefaultValue(0.5f);
        add(knob);
        knob->setValue(0.5f);
    }

    void clickLabel(int step) { click(kRect.getTopLeft() + kOnLabel[step]); }
    int step() const { return static_cast<int>(knob->getValue2() * 9 + 0.5f); }

    static inline const CRect kRect{2, 36, 123, 137};
    // A point inside each label, from the view's corner; step 0 is off.
    static inline const CPoint kOnLabel[10] = {{60, 5},  {95, 8},  {108, 26}, {109, 48}, {105, 72},
                                               {92, 91}, {60, 93}, {30, 90},  {13, 71},  {11, 48}};
    const CPoint inner{62.5, 83.5};  // centre of the picture
    const CPoint ring{62.5, 53.5};
    CAnimCoaxT46CustomKnob* knob;
};

TEST_F(BandKnob, LawAgreesWithItsFormulaAndMirrorsAtTheMiddle)
{
    // 0.195897 exp(1.78416 (0.561501 ln 5.09949 t)) and
    // 0.560488 ln(5.10473 (0.196098 exp(1.78094 t))), worked in double precision.
    expectLaw(*knob,
              {{0.51f, 0.510358f, 0.509655f},
               {0.6f, 0.600598f, 0.599493f},
               {0.75f, 0.751050f, 0.749222f},
               {0.9f, 0.901557f, 0.898951f},
               {1.0f, 1.0f, 0.998771f}});
    EXPECT_NEAR(knob->positionFromValue(0.5f), 0.499667, 2e-6);  // mirrored: not quite the middle
    EXPECT_EQ(knob->positionFromValue(1.2f), 1.f);
    EXPECT_EQ(knob->positionFromValue(-0.2f), 0.f);
    knob->setValue(0.9f);  // position 0.901557
    EXPECT_NEAR(knob->getValue(), 0.900506, 3e-6);
}

TEST_F(BandKnob, WheelMovesTheParameterAndNotThePosition)
{
    wheel(inner, 1);  // 0.499994 + 1/32, through the law and back: 0.531273
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change 0.5313", "end"}));
    knob->setValue(0.75f);
    wheel(inner, -1, kShift);  // reads 0.750270; 1/320 less
    EXPECT_NEAR(knob->getValue(), 0.747412, 3e-6);
    wheel(ring, 1, kShift);  // the ring is as coarse with Shift
    EXPECT_EQ(step(), 1);
}

TEST_F(BandKnob, ClickOnALabelSetsItsStepInOneGesture)
{
    for (int hit = 9; hit >= 0; --hit) {
        SCOPED_TRACE(hit);
        clickLabel(hit);
        char change[20];
        std::snprintf(change, sizeof change, "ring %.4g", hit / 9.0);
        EXPECT_EQ(listener.heard(), (Calls{"begin", change, "end"}));
        expectLit(kOnLabel, kRect.getTopLeft(), static_cast<size_t>(hit));
        EXPECT_EQ(shownFrame(28, 49), 2 * hit);  // only even frames of the ring
    }
    click(kRect.getTopLeft() + CPoint(108.9, 14.9));
    EXPECT_EQ(step(), 1);
    click(kRect.getTopLeft() + CPoint(109, 8));  // right and bottom edges are outside
    click(kRect.getTopLeft() + CPoint(95, 15));
    EXPECT_EQ(step(), 1);
}

TEST_F(BandKnob, ClickOnOffSwitchesBackToTheLastStepHoweverItWasReached)
{
    clickLabel(0);  // nothing to go back to
    EXPECT_EQ(step(), 0);
    wheel(ring, 1);
    wheel(ring, 1);
    wheel(ring, -1);
    wheel(ring, -1);
    clickLabel(0);
    EXPECT_EQ(step(), 1);  // the last one passed on the way down
    press(ring);
    drag(ring - CPoint(0, 45));
    drag(ring + CPoint(0, 100));
    release(ring);
    EXPECT_EQ(step(), 0);
    clickLabel(0);
    EXPECT_EQ(step(), 5);      // (1/9 + 45/96) * 9 = 5.2
    knob->setValue2(7 / 9.f);  // by the host
    clickLabel(0);
    clickLabel(0);
    EXPECT_EQ(step(), 7);
}

TEST_F(BandKnob, WildValuesOfTheHostShowAtTheEnds)
{
    knob->setValue2(-3);
    knob->setDirty();
    EXPECT_EQ(shownFrame(28, 49), 0);
    expectLit(kOnLabel, kRect.getTopLeft(), 0);
    knob->setValue2(40);
    knob->setDirty();
    expectLit(kOnLabel, kRect.getTopLeft(), 9);
    knob->setMax2(0.46f);  // rounded to tenths
    EXPECT_FLOAT_EQ(knob->getMax2(), 0.5f);
}

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
    expectLaw(*knob,
              {{0.51f, 0.523651f, 0.505599f},
               {0.6f, 0.684239f, 0.549522f},
               {0.75f, 0.829992f, 0.656646f},
               {0.9f, 0.933637f, 0.849736f},
               {1.0f, 1.0f, 1.00005f}});
    knob->setValue(0.9f);
    EXPECT_NEAR(knob->getValue(), 0.900866, 3e-6);  // not an exact inverse
}

TEST_F(LevelKnob, FramesAndDragsAreOfThePosition)
{
    knob->setValue(0.6f);
    EXPECT_EQ(shownFrame(40, 60), 68);
    knob->setValue(0.5f);
    press(kCentre);
    drag(kCentre - CPoint(0, 50));
    EXPECT_EQ(shownFrame(40, 60), 75);
    EXPECT_NEAR(knob->getValue(), 0.656646, 1e-4);
    release(kCentre);
    wheel(kCentre, 1);  // 0.01 of the position
    EXPECT_EQ(shownFrame(40, 60), 76);
}

struct HighPassDial : Labelled {
    HighPassDial()
        : dial(add(new CAnimFreqKnob(kRect, &listener, 10, 12, 82, filmstrip(82, 82, 12),
                                     CPoint(0, 0), 15)))
    {
        dial->setOverlayBitmap(litLabels(kRect));
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
    CAnimFreqKnob* dial;
};

TEST_F(HighPassDial, ClickOnALabelSetsItsStepInOneGestureAndOnOffTheLastOne)
{
    // A point inside each label, from the view's corner; step 0 is off.
    const CPoint onLabel[12] = {{55, 10}, {85, 20}, {100, 40}, {100, 58}, {95, 78}, {85, 95},
                                {55, 95}, {28, 95}, {18, 75},  {12, 56},  {15, 40}, {25, 22}};
    for (int hit = 11; hit >= 0; --hit) {
        SCOPED_TRACE(hit);
        click(inView(onLabel[hit]));
        EXPECT_EQ(step(), hit);
        EXPECT_EQ(listener.heard().size(), 3u);
        EXPECT_EQ(shownFrame(63, 85), hit);
        expectLit(onLabel, kRect.getTopLeft(), static_cast<size_t>(hit));
    }
    click(inView(onLabel[0]));
    EXPECT_EQ(step(), 1);
    click(inView({10, 48}));  // in 9 and in 10: the later one wins
    EXPECT_EQ(step(), 10);
}

TEST_F(HighPassDial, WheelGoesRoundBothWaysAllOverTheView)
{
    const CPoint corner = inView({3, 3});  // 75 from the centre, on no label
    for (int notch = 1; notch <= 12; ++notch) {
        wheel(notch % 2 ? corner : kCentre, 1, notch % 2 ? kShift : 0);  // as coarse with Shift
        EXPECT_EQ(step(), notch % 12);
    }
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

// Each kind takes the Control key for itself, and passes it on to the listener.
TEST_F(ControlStage, ControlIsLeftToTheListenerAndOnlyADoubleClickResets)
{
    const auto check = [&](CAnimCoaxT46Knob* knob) {
        knob->setDefaultValue(0);
        add(knob);
        knob->setValue(0.8f);
        const float before = knob->getValue();
        bool held = false;
        listener.onChange = [&](CControl*) { held = knob->getCtrlHeld(); };
        press(kCentre, kLButton | kControl);
        EXPECT_TRUE(held);
        EXPECT_NEAR(knob->getValue(), before, 0.05);  // a dial takes its nearest step
        drag(kCentre - CPoint(0, 4));
        EXPECT_FALSE(held);
        release(kCentre);
        wheel(kCentre, 1, kControl);
        EXPECT_TRUE(held);
        click(kCentre, kLButton | kControl | kDoubleClick);
        EXPECT_NEAR(knob->getValue(), 0, 1e-2);
        column->removeView(knob);
    };
    check(
        new CAnimCoaxT46CustomKnob(kRect, &listener, 28, 129, 71, nullptr, {0, 0}, 25, 12, 25, 18));
    check(new CAnimDriveKnob(kRect, &listener, 8, 101, 82, nullptr, {0, 0}, 15));
    check(new CAnimFreqKnob(kRect, &listener, 10, 12, 82, nullptr, {0, 0}, 15));
}

}  // namespace
