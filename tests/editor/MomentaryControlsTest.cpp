// Kick buttons, file buttons and the rocker.
#include "CSaveLoadButton.h"
#include "CZKKickButton2.h"
#include "CZKRRockerSwitch.h"
#include "ControlStage.h"

using namespace VSTGUI;

namespace {

const CRect kRect(30, 40, 42, 54);
const CPoint kInside(35, 45);
const CPoint kOutside(100, 100);

struct KickButton : ControlStage {
    template <class Button = CZKKickButton>
    Button* addButton(bool doubleClickOnly = false)
    {
        return add(new Button(kRect, &listener, 1014, 14, filmstrip(12, 14, 3), doubleClickOnly));
    }
    int shown() { return shownFrame(35, 45); }
};

TEST_F(KickButton, ActsOnThePressAndStaysPressedWhileHeld)
{
    auto* const button = addButton();
    EXPECT_EQ(shown(), 0);
    drag(kInside, 0);
    EXPECT_EQ(shown(), 1);
    EXPECT_EQ(press(kInside), kMouseEventHandled);
    EXPECT_EQ(listener.heard(), (Calls{"change 1"}));
    EXPECT_EQ(shown(), 2);
    EXPECT_EQ(drag(kInside), kMouseEventHandled);
    EXPECT_EQ(drag({-500, 45}), kMouseEventHandled);
    EXPECT_EQ(shown(), 2);
    release({-500, 45});
    EXPECT_EQ(button->getValue(), 0);
    EXPECT_EQ(shown(), 0);  // the mouse is not over it any more
    EXPECT_EQ(listener.heard(), Calls{});
}

TEST_F(KickButton, OtherButtonsDoNothing)
{
    auto* const button = addButton();
    EXPECT_EQ(press(kInside, kRButton), kMouseDownEventHandledButDontNeedMovedOrUpEvents);
    EXPECT_EQ(listener.heard(), Calls{});
    EXPECT_FALSE(button->isHeld());
    press(kInside, kLButton | kControl);
    EXPECT_EQ(listener.heard(), (Calls{"change 1"}));  // Control means nothing here
}

TEST_F(KickButton, InDoubleClickModeASingleClickDoesNothing)
{
    auto* const button = addButton(true);
    EXPECT_EQ(press(kInside), kMouseDownEventHandledButDontNeedMovedOrUpEvents);
    release(kInside);
    EXPECT_EQ(press(kInside, kRButton | kDoubleClick),
              kMouseDownEventHandledButDontNeedMovedOrUpEvents);
    release(kInside, kRButton);
    EXPECT_EQ(listener.heard(), Calls{});
    EXPECT_EQ(press(kInside, kLButton | kDoubleClick), kMouseEventHandled);
    EXPECT_EQ(shown(), 2);
    release(kInside);
    click(kInside, kLButton | kDoubleClick | kControl);
    EXPECT_EQ(listener.heard(), (Calls{"change 1", "change 0.5"}));
    EXPECT_EQ(button->getValue(), 0);
}

TEST_F(KickButton, ReleasedByItsListenerItLeavesNoGrabBehind)
{
    auto* const button = addButton();
    listener.onChange = [&](CControl*) { button->release(); };
    EXPECT_EQ(press(kInside), kMouseDownEventHandledButDontNeedMovedOrUpEvents);
    EXPECT_EQ(shown(), 0);
    EXPECT_EQ(button->getValue(), 0);
}

TEST_F(KickButton, LosingTheMouseReleasesIt)
{
    auto* const button = addButton();
    press(kInside);
    host.mouseCancel();
    EXPECT_FALSE(button->isHeld());
    EXPECT_EQ(shown(), 0);
    EXPECT_EQ(listener.heard(), (Calls{"change 1"}));
}

TEST_F(KickButton, TheSecondKindShowsOnlyTheMouseOverIt)
{
    addButton<CZKKickButton2>();
    EXPECT_EQ(shown(), 0);
    press(kInside);
    EXPECT_EQ(shown(), 0);
    EXPECT_EQ(listener.heard(), (Calls{"change 1"}));
    release(kInside);
    drag(kInside, 0);
    EXPECT_EQ(shown(), 1);
    press(kInside);
    EXPECT_EQ(shown(), 1);
}

struct SaveLoadButton : KickButton {
    SaveLoadButton()
        : button(add(new CSaveLoadButton(kRect, &listener, 1002, 14, filmstrip(12, 14, 3))))
    {
        button->setWantsFocus(false);
    }
    CSaveLoadButton* button;
};

TEST_F(SaveLoadButton, ListenerTellsTheRightButtonFromTheLeftByTheValue)
{
    const struct {
        int32_t buttons;
        const char* change;
    } rows[] = {
        {kLButton, "change 1"},
        {kRButton, "change 0.5"},
        {kRButton | kShift, "change 1"},
        {kRButton | kDoubleClick, "change 1"},
        {kLButton | kRButton, "change 1"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(press(kInside, row.buttons), kMouseDownEventHandledButDontNeedMovedOrUpEvents);
        EXPECT_EQ(listener.heard(), (Calls{row.change}));
        EXPECT_EQ(button->getValue(), 0);
        release(kInside, row.buttons);
    }
    EXPECT_EQ(press(kInside, kMButton), kMouseEventNotHandled);
    button->setListener(nullptr);
    EXPECT_EQ(press(kInside), kMouseEventNotHandled);
    EXPECT_EQ(listener.heard(), Calls{});
}

TEST_F(SaveLoadButton, ShowsThatItIsAtWorkWhileTheDialogStands)
{
    drag(kInside, 0);
    EXPECT_EQ(shown(), 1);
    int inDialog = kNothing;
    listener.onChange = [&](CControl*) {
        frame->onStartLocalEventLoop();
        inDialog = shown();
    };
    press(kInside, kRButton);
    EXPECT_EQ(inDialog, 2);
    EXPECT_EQ(shown(), 1);
    drag(kOutside, 0);
    EXPECT_EQ(shown(), 0);
}

// 31 wide from 100: the centre is 115.5.
struct Rocker : ControlStage {
    Rocker()
        : rocker(add(
            new CZKRRockerSwitch({100, 40, 131, 54}, &listener, 1001, 14, filmstrip(31, 14, 5))))
    {
    }
    int shown() { return shownFrame(105, 45); }
    CZKRRockerSwitch* rocker;
};

TEST_F(Rocker, LeftHalfMeansBackRightHalfForwardAndTheReleaseIsSilent)
{
    EXPECT_EQ(press({115.5, 45}), kMouseEventHandled);
    EXPECT_EQ(shown(), 4);
    drag({0, 0});
    EXPECT_EQ(shown(), 4);
    release({0, 0});
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change 1", "end"}));
    EXPECT_EQ(rocker->getValue(), 0);
    EXPECT_EQ(press({115.4, 45}), kMouseEventHandled);
    release({115.4, 45});
    press({115.4, 45});  // a second click on the same half counts again
    release({115.4, 45});
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change 0", "end", "begin", "change 0", "end"}));
    EXPECT_EQ(press({120, 45}, kRButton), kMouseEventNotHandled);
    EXPECT_EQ(listener.heard(), Calls{});
}

TEST_F(Rocker, LightsUpOnTheSideUnderTheMouse)
{
    EXPECT_EQ(shown(), 0);
    drag({101, 45}, 0);
    EXPECT_EQ(shown(), 1);
    drag({115.5, 45}, 0);
    EXPECT_EQ(shown(), 2);
    press({130, 45});
    EXPECT_EQ(shown(), 4);
    drag({101, 45});
    EXPECT_EQ(shown(), 4);
    release({101, 45});
    EXPECT_EQ(shown(), 2);  // no move without a button since
    drag({101, 45}, 0);
    EXPECT_EQ(shown(), 1);
    drag({200, 45}, 0);
    EXPECT_EQ(shown(), 0);
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change 1", "end"}));
}

TEST_F(Rocker, EachNotchOfTheWheelIsHeardOnceAndItComesToRestSilently)
{
    ManualClock clock;
    EXPECT_TRUE(wheel({101, 45}, 1));
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change -1", "end"}));
    EXPECT_EQ(shown(), 3);
    clock.advance(150);
    wheel({101, 45}, -1);
    EXPECT_EQ(listener.heard(), (Calls{"begin", "change 1", "end"}));
    clock.advance(150);
    EXPECT_EQ(shown(), 4);
    clock.advance(100);
    EXPECT_LT(shown(), 3);
    EXPECT_EQ(rocker->getValue(), 0);
    EXPECT_TRUE(wheel({101, 45}, 0.1f));
    clock.advance(1000);
    EXPECT_EQ(listener.heard(), Calls{});
}

TEST_F(Rocker, PressSoonAfterTheWheelIsNotUndoneByTheWheelsRest)
{
    ManualClock clock;
    wheel({101, 45}, 1);
    clock.advance(100);
    press({130, 45});
    clock.advance(150);
    EXPECT_EQ(shown(), 4);
    release({130, 45});
    wheel({101, 45}, 1);
    column->removeView(rocker);  // with its timer running
    clock.advance(1000);
    EXPECT_EQ(listener.heard(),
              (Calls{"begin", "change -1", "end", "begin", "change 1", "end", "begin", "change -1",
                     "end"}));
}

}  // namespace
