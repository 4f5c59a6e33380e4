// Mouse and keyboard on a real window.
#include "RecordingFrame.h"
#include "TestHost.h"

#include <gtest/gtest.h>

using namespace VSTGUI;

using Events = std::vector<std::string>;

namespace {

struct Mouse : testing::Test {
    Mouse()
    {
        host.movePointer(350, 250);  // beside the frame
        pump();
        frame.events.clear();
    }

    TestHost host;
    RecordingFrame frame{host.handle()};
};

}  // namespace

TEST_F(Mouse, DragGoesOnOutsideTheWindowUntilTheRelease)
{
    host.movePointer(20, 30);
    host.pressButton();
    pump();
    EXPECT_EQ(GetCapture(), frame.window());
    host.movePointer(-40, -50);
    pump();
    EXPECT_TRUE(frame.has("move -40,-50 L"));
    host.releaseButton();
    ASSERT_TRUE(pumpUntil([&] { return frame.has("exit"); }));
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(frame.eventsButMoves(), (Events{"down 20,30 L", "up -40,-50 L", "exit"}));
}

TEST_F(Mouse, PressThatNobodyTakesIsNotCaptured)
{
    frame.onPress = [] { return kMouseDownEventHandledButDontNeedMovedOrUpEvents; };
    host.movePointer(20, 30);
    host.pressButton();
    pump();
    EXPECT_EQ(GetCapture(), nullptr);
    host.movePointer(350, 250);
    pump();
    EXPECT_FALSE(frame.has("move 350,250 L"));
    host.releaseButton();
    pump();
    EXPECT_FALSE(frame.has("up 350,250 L"));
}

TEST_F(Mouse, SecondPressOfAPairIsADoubleClick)
{
    host.click(60, 70);
    host.click(60, 70);
    pump();
    EXPECT_EQ(frame.eventsButMoves(),
              (Events{"down 60,70 L", "up 60,70 L", "down 60,70 L double", "up 60,70 L"}));
}

TEST_F(Mouse, PressTellsAllButtonsAndModifiers)
{
    PostMessageW(frame.window(), WM_RBUTTONDOWN, MK_RBUTTON | MK_LBUTTON | MK_SHIFT | MK_CONTROL,
                 MAKELPARAM(5, 6));
    PostMessageW(frame.window(), WM_XBUTTONUP, MAKEWPARAM(0, XBUTTON2), MAKELPARAM(-7, -8));
    pump();
    EXPECT_TRUE(frame.has("down 5,6 L R shift control"));
    EXPECT_TRUE(frame.has("up -7,-8 5"));
}

TEST_F(Mouse, WheelsCountNotchesAlsoLeftOfAndAboveTheScreen)
{
    // 300 left and 200 above the host are off the screen; positions are the screen's.
    PostMessageW(frame.window(), WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, 60), MAKELPARAM(-10, -20));
    PostMessageW(frame.window(), WM_MOUSEHWHEEL, MAKEWPARAM(0, 120),
                 MAKELPARAM(kHostX + 3, kHostY + 4));
    pump();
    EXPECT_TRUE(frame.has("wheel -310,-220 shift y 0.5"));
    EXPECT_TRUE(frame.has("wheel 3,4 x -1"));
}

TEST_F(Mouse, LeavingIsReportedOnce)
{
    host.movePointer(20, 30);
    pump();
    host.movePointer(350, 250);
    ASSERT_TRUE(pumpUntil([&] { return frame.has("exit"); }));
    pump();
    EXPECT_EQ(frame.eventsButMoves(), Events{"exit"});
}

TEST_F(Mouse, CaptureTakenByAnotherWindowCancelsTheDrag)
{
    host.movePointer(20, 30);
    host.pressButton();
    pump();
    SetCapture(host.handle());
    pump();
    ReleaseCapture();
    host.releaseButton();
    pump();
    EXPECT_EQ(frame.eventsButMoves(), (Events{"down 20,30 L", "cancel", "up 20,30 L"}));
}

TEST_F(Mouse, ReleaseThatAnotherLoopHasTakenCancelsTheDrag)
{
    frame.onPress = [&] {
        host.releaseButton();
        MSG message;
        while (!PeekMessageW(&message, frame.window(), WM_LBUTTONUP, WM_LBUTTONUP, PM_REMOVE))
            Sleep(1);
        return kMouseEventHandled;
    };
    host.movePointer(20, 30);
    host.pressButton();
    pump();
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(frame.eventsButMoves(), (Events{"down 20,30 L", "cancel"}));
}

TEST_F(Mouse, FrameMayCloseInsideAPress)
{
    frame.onPress = [&] {
        frame.close();
        return kMouseEventHandled;
    };
    host.movePointer(20, 30);
    host.pressButton();
    pump();
    host.releaseButton();
    pump();
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(GetWindow(host.handle(), GW_CHILD), nullptr);
    EXPECT_EQ(frame.eventsButMoves(), (Events{"down 20,30 L"}));
}

TEST_F(Mouse, HostThatDestroysTheWindowDuringADragCancelsIt)
{
    host.movePointer(20, 30);
    host.pressButton();
    pump();
    host.destroy();
    host.releaseButton();
    pump();
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_TRUE(frame.has("cancel"));
    // The object is left, without a window.
    CRect size;
    CPoint position;
    EXPECT_EQ(frame->getPlatformRepresentation(), nullptr);
    EXPECT_FALSE(frame->getSize(size));
    EXPECT_FALSE(frame->setSize(CRect(0, 0, 10, 10)));
    EXPECT_FALSE(frame->invalidRect(CRect(0, 0, 10, 10)));
    EXPECT_FALSE(frame->getGlobalPosition(position));
    EXPECT_FALSE(frame->getCurrentMousePosition(position));
    EXPECT_EQ(frame->createPlatformTextEdit(nullptr), nullptr);
    EXPECT_EQ(frame->createPlatformOptionMenu(), nullptr);
}

TEST_F(Mouse, CurrentPositionAndButtonsAreThoseOfTheMoment)
{
    host.movePointer(250, -20);
    host.pressButton(hands::Button::Right);
    pump();
    CPoint where;
    CButtonState buttons(kShift);
    EXPECT_TRUE(frame->getCurrentMousePosition(where));
    EXPECT_EQ(where, CPoint(250, -20));
    EXPECT_TRUE(frame->getCurrentMouseButtons(buttons));
    EXPECT_EQ(buttons(), kShift | kRButton);
    host.releaseButton(hands::Button::Right);
    pump();
}

TEST_F(Mouse, KeysArriveWithModifiersOnceTheHostGivesTheKeyboard)
{
    SetFocus(frame.window());
    frame.events.clear();
    BYTE keys[256]{};
    keys[VK_SHIFT] = 0x80;
    SetKeyboardState(keys);
    SendMessageW(frame.window(), WM_KEYDOWN, VK_F12, 0);
    SendMessageW(frame.window(), WM_KEYUP, VK_NUMPAD9, 0);
    SendMessageW(frame.window(), WM_KEYDOWN, 'A', 0);  // no virtual key: left to the host
    keys[VK_SHIFT] = 0;
    SetKeyboardState(keys);
    TestHost::pressKey(VK_PRIOR);
    pump();
    EXPECT_EQ(frame.events, (Events{"key 51 1 0", "keyup 33 1 0", "key 15 0 0", "keyup 15 0 0"}));
}

TEST_F(Mouse, KeyboardGoingToTheHostDeactivates)
{
    SetFocus(frame.window());
    host.takeFocus();
    pump();
    EXPECT_EQ(frame.events, (Events{"active", "inactive"}));
}
