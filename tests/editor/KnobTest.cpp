// What the knobs do beyond their rows: how often the host hears of a move, what Control and a
// double click do, and the way back from "off".
#include "EditorStage.h"

#include "CAnimCoaxT46CustomKnob.h"

using namespace VSTGUI;

namespace {

TEST_F(Editor, EachMoveOfADragIsToldTwiceInOneGesture)
{
    set(kLink, 0);
    window->screen.mouseDown(at(kLGainL));
    window->screen.mouseMove(at(kLGainL) - CPoint(0, 10), kLButton);
    window->screen.mouseUp(at(kLGainL));
    window->screen.mouseMove(at(kLGainL) - CPoint(0, 20));
    EXPECT_EQ(
        controller.host.calls,
        (Calls{"begin 28", "perform 28", "perform 28", "perform 28", "perform 28", "end 28"}));
    ASSERT_EQ(controller.host.edits.size(), 4u);
    EXPECT_NEAR(controller.host.edits[2].second, 0.5, 1e-4) << "at first as things stand";
    EXPECT_NEAR(controller.host.edits[3].second, 0.55, 1e-3);
}

TEST_F(Editor, ADoubleClickResetsAKnobAndControlDoesNot)
{
    showEverything();
    for (const int id : {kLGainL, kLFreqL, kDriveL, kOutputL, kHpfL}) {
        SCOPED_TRACE(id);
        set(id, 1);
        window->click(at(id), kLButton | kControl);
        EXPECT_NEAR(value(id), 1, 2e-3);
        window->click(at(id), kLButton | kControl | kDoubleClick);
        EXPECT_LT(value(id), 0.51);
    }
    // What it tells of is what the gesture before has moved.
    window->click(at(kLFreqL));
    heard();
    window->screen.mouseDown(at(kLGainL), kLButton | kDoubleClick);
    EXPECT_EQ(heard(), gesture(kLGainL, {kLFreqL}));
}

TEST_F(Editor, OffGoesBackToTheLastStepHoweverItWasReached)
{
    showEverything();
    for (const ParamID id : {kLFreqL, kHpfL}) {
        SCOPED_TRACE(id);
        const bool band = id == kLFreqL;
        const double last = band ? 9 : 11;
        const CPoint knob = at(static_cast<int>(id));
        const Placed placed = control(static_cast<int>(band ? kLGainL : kHpfL));
        const CRect label = rows("label", placed.use)[0].rect();
        const auto clickOff = [&] {
            window->click(placed.rect.getTopLeft() + label.getCenter());
            return value(static_cast<int>(id)) * last;
        };
        EXPECT_EQ(clickOff(), 0) << "nothing to go back to";
        for (const float notch : {1.0f, 1.0f, -1.0f, -1.0f})
            window->screen.wheel(knob, notch);
        EXPECT_NEAR(clickOff(), 1, 1e-5) << "the last one passed on the way down";
        EXPECT_EQ(clickOff(), 0);
        const double up = band ? 52 : 60;
        window->screen.mouseDown(knob);
        window->screen.mouseMove(knob - CPoint(0, up), kLButton);
        window->screen.mouseMove(knob, kLButton);
        window->screen.mouseUp(knob);
        EXPECT_NEAR(clickOff(), band ? 5 : 6, 1e-5);
        set(static_cast<int>(id), 7 / last);
        EXPECT_EQ(clickOff(), 0);
        EXPECT_NEAR(clickOff(), 7, 1e-5) << "set by the host";
    }
}

// Which no knob of the editor does.
TEST(CoaxialKnob, ControlResetsTheRingWithinItsLimits)
{
    const CRect rect(0, 0, 100, 100);
    const auto knob = VSTGUI::owned(new CAnimCoaxT46Knob(rect, nullptr, 0, 5, 20, nullptr, {}, 0));
    knob->setInnerRadius(21);
    knob->setDefaultValue(0.25f);
    knob->setDefaultValue2(0.75f);
    knob->setMax2(0.7f);
    CPoint middle(50, 50), edge(50, 5);
    EXPECT_EQ(knob->onMouseDown(middle, kLButton | kControl),
              kMouseDownEventHandledButDontNeedMovedOrUpEvents);
    EXPECT_EQ(knob->getValue(), 0.25f);
    knob->onMouseDown(edge, kLButton | kControl);
    EXPECT_EQ(knob->getValue2(), 0.7f);
    EXPECT_FALSE(knob->getRingIsOuter());
    const auto band =
        VSTGUI::owned(new CAnimCoaxT46CustomKnob(rect, nullptr, 0, 5, 20, nullptr, {}, 0, 0, 0, 0));
    band->setMax2(0.46f);
    EXPECT_FLOAT_EQ(band->getMax2(), 0.5f) << "rounded to tenths";
}

}  // namespace
