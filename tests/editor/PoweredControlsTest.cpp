// Buttons and the switch with and without power.
#include "CBlinkLEDButton.h"
#include "CPoweredResizeButton.h"
#include "CPoweredVerticalSwitch.h"
#include "ControlStage.h"

using namespace VSTGUI;

namespace {

const CRect kButtonRect(20, 30, 64, 66);  // 44 by 36
const CPoint kOnButton(40, 40);

struct PoweredControls : ControlStage {
    CPoweredButton* addButton(bool threeFrame)
    {
        return add(new CPoweredButton(kButtonRect, &listener, 4,
                                      filmstrip(44, 36, threeFrame ? 3 : 2), threeFrame));
    }
};

TEST_F(PoweredControls, PressTogglesInOneGestureAndNeedsNoRelease)
{
    auto* const button = add(new CZKROnOffButton(kButtonRect, &listener, 0, filmstrip(44, 36, 2)));
    EXPECT_EQ(press(kOnButton), kMouseDownEventHandledButDontNeedMovedOrUpEvents);
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change 1", "end"}));
    EXPECT_EQ(shownFrame(40, 40), 1);
    drag({40, 200});
    release({40, 200});
    EXPECT_EQ(listener.heard(), Calls{});
    press(kOnButton, kLButton | kShift | kDoubleClick);
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change 0", "end"}));
    EXPECT_EQ(shownFrame(40, 40), 0);
    EXPECT_EQ(press(kOnButton, kRButton), kMouseEventNotHandled);
    EXPECT_EQ(listener.heard(), Calls{});

    // Exactly half is on, to the eye and to the click.
    button->setValue(0.5f);
    button->setDirty();
    EXPECT_EQ(shownFrame(40, 40), 1);
    click(kOnButton);
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change 0", "end"}));
    button->setValue(0.49f);
    button->setDirty();
    EXPECT_EQ(shownFrame(40, 40), 0);
    click(kOnButton);
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change 1", "end"}));
}

TEST_F(PoweredControls, FrameFollowsValueAndPower)
{
    const struct {
        bool threeFrame;
        int32_t power;
        float value;
        int frame;
    } rows[] = {
        {false, 0, 0, 0}, {false, 0, 1, 0}, {false, 1, 0, 0}, {false, 1, 1, 1},
        {true, 0, 0, 0},  {true, 1, 0, 0},  {true, 1, 1, 1},  {true, 0, 1, 2},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.threeFrame << row.power << row.value);
        auto* const button = addButton(row.threeFrame);
        button->setPower(row.power);
        button->setValue(row.value);
        button->setDirty();
        EXPECT_EQ(shownFrame(21, 31), row.frame);
        EXPECT_EQ(shownFrame(63, 65), row.frame);
        EXPECT_EQ(shownFrame(64, 66), kNothing);
        column->removeView(button);
    }
}

TEST_F(PoweredControls, TwoFrameButtonIsLockedWithoutPowerAndForgetsNothing)
{
    auto* const button = addButton(false);
    button->setValue(1);
    EXPECT_EQ(press(kOnButton), kMouseEventHandled);
    release(kOnButton);
    EXPECT_TRUE(wheel(kOnButton, 1));
    EXPECT_EQ(listener.heard(), Calls{});
    button->setPower(1);
    button->setDirty();
    EXPECT_EQ(shownFrame(40, 40), 1);
    click(kOnButton);
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change 0", "end"}));
}

TEST_F(PoweredControls, WheelTogglesBeyondATenthOfANotch)
{
    auto* const button = add(new CZKROnOffButton(kButtonRect, &listener, 0, filmstrip(44, 36, 2)));
    EXPECT_TRUE(wheel(kOnButton, 0.11f));
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change 1", "end"}));
    EXPECT_EQ(shownFrame(40, 40), 1);
    EXPECT_TRUE(wheel(kOnButton, -0.11f));
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change 0", "end"}));
    EXPECT_TRUE(wheel(kOnButton, 0.1f));
    EXPECT_TRUE(wheel(kOnButton, -0.1f));
    EXPECT_EQ(button->getValue(), 0);
}

TEST_F(PoweredControls, LatchingWheelTurnsOnOneWayAndOffTheOther)
{
    auto* const button = add(new CZKROnOffButton(kButtonRect, &listener, 0, filmstrip(44, 36, 2)));
    button->setWheelLatching(true);
    for (const float on : {-1.f, 1.f}) {
        SCOPED_TRACE(on);
        button->setWheelInverted(on > 0);
        for (const auto& [turn, value] : {std::pair(-on, 0.f), {on, 1.f}, {on, 1.f}, {-on, 0.f}}) {
            wheel(kOnButton, turn);
            EXPECT_EQ(button->getValue(), value);
        }
    }
}

TEST_F(PoweredControls, BlinkingButtonLaysItsLitFrameOverTheDarkOne)
{
    // Dark is black, lit is white, so that the level can be read off.
    const auto bitmap = paintedBitmap(
        44, 72, [](int32_t, int32_t y) { return y < 36 ? kBlackCColor : kWhiteCColor; });
    auto* const button = add(new CBlinkLEDButton(kButtonRect, &listener, 1, bitmap, false));
    const auto brightness = [&](float value, int32_t power, float level) {
        button->setValue(value);
        button->setPower(power);
        button->setBlinkLevel(level);
        button->setDirty();
        return static_cast<int>(seen(40, 40).green);
    };
    EXPECT_EQ(brightness(1, 1, 1.f), 255);
    EXPECT_NEAR(brightness(1, 1, 0.3f), 77, 2);  // 0.3 * 255
    EXPECT_EQ(brightness(1, 1, 1.03f), 255);
    EXPECT_EQ(brightness(0, 1, 1.f), 0);
    EXPECT_EQ(brightness(1, 0, 1.f), 0);

    // The edges of real pictures are translucent: while it is off, the pulse must not show there.
    button->setBackground(
        paintedBitmap(44, 72, [](int32_t, int32_t) { return CColor(255, 255, 255, 128); }));
    EXPECT_EQ(brightness(0, 1, 1.f), brightness(0, 0, 1.f));
    EXPECT_EQ(brightness(0, 1, 0.3f), brightness(0, 0, 1.f));
}

// Five positions of 20 pixels from y = 30 down; value 0 is the top.
struct VerticalSwitch : PoweredControls {
    VerticalSwitch()
        : control(add(new CPoweredVerticalSwitch({6, 30, 53, 130}, &listener, 3, 5, 100, 5,
                                                 filmstrip(47, 100, 5))))
    {
        control->setValue(0.5f);
        control->setDirty();
    }
    CPoweredVerticalSwitch* control;
};

TEST_F(VerticalSwitch, WheelStepsOnePositionAndSaysNothingOfAGesture)
{
    control->setPower(1);
    host.paint();
    wheel({10, 40}, 0.2f);
    EXPECT_EQ(listener.heard(), (Calls{"change 0.25"}));
    EXPECT_EQ(shownFrame(10, 40), 1);
    wheel({10, 40}, 3);
    wheel({10, 40}, 1);
    EXPECT_EQ(listener.heard(), (Calls{"change 0"}));  // and not beyond
    wheel({10, 40}, 0.1f);
    EXPECT_EQ(listener.heard(), Calls{});
    for (int i = 0; i < 5; ++i)
        wheel({10, 40}, -1);
    EXPECT_EQ(listener.heard(), (Calls{"change 0.25", "change 0.5", "change 0.75", "change 1"}));
    control->setValue(0.6f);  // between positions: (0.6 + 0.25) * 4 + 0.5 = 3.9
    wheel({10, 40}, -1);
    EXPECT_EQ(control->getValue(), 0.75f);
}

TEST_F(VerticalSwitch, WithoutPowerItIsOutOfSightAndTakesNothing)
{
    EXPECT_EQ(shownFrame(10, 40), kNothing);
    EXPECT_EQ(press({10, 31}), kMouseEventHandled);
    EXPECT_EQ(drag({10, 120}), kMouseEventHandled);
    release({10, 120});
    EXPECT_TRUE(wheel({10, 40}, 1));
    EXPECT_EQ(listener.heard(), Calls{});
    EXPECT_EQ(control->getValue(), 0.5f);
    control->setPower(1);
    control->setDirty();
    EXPECT_EQ(shownFrame(10, 40), 2);
}

TEST_F(VerticalSwitch, PowerLostDuringADragEndsTheGestureWithTheRelease)
{
    control->setPower(1);
    press({10, 31});
    control->setPower(0);
    drag({10, 120});
    release({10, 120});
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change 0", "end"}));
}

}  // namespace
