// A knob and a ring on one axis: which of them the mouse takes, how far a drag goes, and what the
// listener hears.
#include "CAnimCoaxT46Knob.h"
#include "ControlStage.h"

using namespace VSTGUI;

namespace {

// The picture is 71 by 71 at (45, 32): centre (80.5, 67.5).
struct CoaxialKnob : ControlStage {
    CoaxialKnob()
        : knob(new CAnimCoaxT46Knob(CRect(20, 20, 141, 121), &listener, 28, 129, 71, middleStrip(),
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

    // Frame i has green i + 1 in a square of 11 in the middle and nothing around it.
    static SharedPointer<CBitmap> middleStrip()
    {
        return paintedBitmap(71, 71 * 129, [](int32_t x, int32_t y) {
            const bool middle = x >= 30 && x <= 40 && y % 71 >= 30 && y % 71 <= 40;
            return middle ? CColor(0, static_cast<uint8_t>(y / 71 + 1), 0, 255)
                          : CColor(0, 0, 0, 0);
        });
    }
    int innerFrame() { return seen(80, 67).green - 1; }
    int outerFrame() { return shownFrame(46, 33); }

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
        SCOPED_TRACE(testing::Message() << row.where.x << ", " << row.where.y);
        press(row.where);
        EXPECT_EQ(knob->getRingIsOuter(), row.ring);
        release(row.where);
        wheel(row.ring ? inner : ring, 0);
        wheel(row.where, 0);
        EXPECT_EQ(knob->getRingIsOuter(), row.ring);
    }
}

TEST_F(CoaxialKnob, WithoutAGivenRadiusTheInnerKnobIsAsWideAsThePicture)
{
    auto* const plain = add(new CAnimCoaxT46Knob(CRect(150, 150, 250, 250), &listener, 1, 101, 80,
                                                 nullptr, CPoint(0, 0), 10));
    click({160, 200});  // 40 left of the centre
    EXPECT_FALSE(plain->getRingIsOuter());
    click({159.5, 200});
    EXPECT_TRUE(plain->getRingIsOuter());
    plain->setCentre({159.5, 200}, 5);
    click({155, 200});
    EXPECT_FALSE(plain->getRingIsOuter());
}

TEST_F(CoaxialKnob, DragTellsTheListenerTwiceForEachMoveInOneGesture)
{
    EXPECT_EQ(press(inner), kMouseEventHandled);
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change 0.5", "change 0.5"}));
    EXPECT_EQ(drag(inner - CPoint(0, 10)), kMouseEventHandled);
    EXPECT_EQ(listener.heard(), (Calls{"change 0.5", "change 0.55"}));
    drag(inner);
    EXPECT_EQ(listener.heard(), (Calls{"change 0.55", "change 0.5"}));
    release(inner);
    EXPECT_EQ(listener.heard(), (Calls{"end"}));
    drag(inner - CPoint(0, 10), 0);
    EXPECT_EQ(listener.heard(), Calls{});

    press(ring);
    drag(ring - CPoint(0, 10));
    release(ring);
    EXPECT_EQ(listener.heard(),
              (Calls{"begin", "ring 0.5", "ring 0.5", "ring 0.5", "ring 0.6", "end"}));
    EXPECT_FLOAT_EQ(knob->getValue(), 0.5f);
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
    EXPECT_NEAR(after(10, 0), 5, 1e-4);
    EXPECT_NEAR(after(11, 0), 5, 1e-4);
    EXPECT_NEAR(after(-11, 0), -5, 1e-4);
    EXPECT_NEAR(after(1, 0), 0, 1e-4);  // the dead zone
    EXPECT_NEAR(after(-1, 0), 0, 1e-4);
    EXPECT_NEAR(after(0, 1), 1, 1e-4);
    EXPECT_NEAR(after(1, 1), 1, 1e-4);
    EXPECT_NEAR(after(-2, 1), 0, 1e-4);
}

TEST_F(CoaxialKnob, DragOutsideTheWindowGoesOnAndComesBackFromTheEndStop)
{
    press(inner);
    drag(inner - CPoint(0, 50));
    EXPECT_FLOAT_EQ(knob->getValue(), 0.75f);
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
    knob->setValue2(0.5f);
    press(ring, kLButton | kShift);
    drag(ring - CPoint(0, 10), kLButton | kShift);
    EXPECT_FLOAT_EQ(knob->getValue2(), 0.51f);
    knob->setFineFactor2(0.5f);
    drag(ring - CPoint(0, 10));  // coarse: stays
    drag(ring - CPoint(0, 10), kLButton | kShift);
    drag(ring - CPoint(0, 20), kLButton | kShift);
    EXPECT_FLOAT_EQ(knob->getValue2(), 0.56f);
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
        release(inner);
        EXPECT_EQ(listener.heard(), (Calls{"begin", "ring 0.5", "end"}));
        EXPECT_EQ(knob->getValue(), 0.25f);
        click(inner);
        listener.heard();
        press(ring, buttons);
        EXPECT_EQ(listener.heard(), (Calls{"begin", "change 0.25", "end"}));
        EXPECT_EQ(knob->getValue2(), 0.75f);
    }
    knob->setMax2(0.5f);
    press(ring, kLButton | kDoubleClick);
    EXPECT_EQ(knob->getValue2(), 0.5f);
}

TEST_F(CoaxialKnob, OtherButtonsDoNothing)
{
    EXPECT_EQ(press(inner, kRButton), kMouseEventNotHandled);
    EXPECT_EQ(press(ring, kMButton | kControl), kMouseEventNotHandled);
    EXPECT_EQ(listener.heard(), Calls{});
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
    knob->setWheelStep(2);
    EXPECT_EQ(turn(inner, -1, 0), (Calls{"begin", "change 0", "end"}));
}

TEST_F(CoaxialKnob, DrawsTheRingBelowTheKnobInsideTheInsets)
{
    const struct {
        float value, value2;
        int innerFrame, outerFrame;
    } rows[] = {
        {0, 0, 0, 0},
        {1, 1, 128, 23},
        {0.5f, 0.5f, 64, 12},  // 0.5 * 23 + 0.5 = 12
        {0.0039f, 0.0217f, 0, 0},
        {0.0040f, 0.0218f, 1, 1},  // from half a step on: 1 / 256, 1 / 46
        {-1, -1, 0, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.value << ", " << row.value2);
        knob->setValue(row.value);
        knob->setValue2(row.value2);
        EXPECT_EQ(innerFrame(), row.innerFrame);
        EXPECT_EQ(outerFrame(), row.outerFrame);
    }
    EXPECT_EQ(shownFrame(44, 60), kNothing);
    EXPECT_NE(shownFrame(45, 60), kNothing);
    EXPECT_NE(shownFrame(115, 102), kNothing);
    EXPECT_EQ(shownFrame(116, 102), kNothing);
    EXPECT_EQ(shownFrame(115, 103), kNothing);
    knob->setOuterBitmap(nullptr, 0);
    knob->setDirty();
    EXPECT_EQ(outerFrame(), kNothing);
}

TEST_F(CoaxialKnob, WithoutAListenerItTurnsAllTheSame)
{
    knob->setListener(nullptr);
    press(inner);
    drag(inner - CPoint(0, 10));
    release(inner);
    wheel(ring, 1);
    press(ring, kLButton | kDoubleClick);
    EXPECT_FLOAT_EQ(knob->getValue(), 0.55f);
    EXPECT_EQ(knob->getValue2(), 0.75f);
}

}  // namespace
