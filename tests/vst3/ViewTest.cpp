// The bundle's editor in a VST 3 host's window.
#include "params/ids/ParameterIds.h"
#include "tests/support/Pictures.h"
#include "tests/support/Times.h"
#include "tests/vst3/HostFrame.h"

#include <algorithm>

using namespace vst3;

namespace {

// The key of `QB11`, the low band's knob and the keys of the presets, in the smallest layout.
constexpr Place kKeyOfQB11{332, 104}, kKnob{104, 294}, kMenu{264, 494}, kNextPreset{297, 496};

struct View : testing::Test {
    View() : instance(module)
    {
        instance.start();
        userinput::movePointer({1000, 740});
    }
    IPtr<IPlugView> open() { return owned(instance.controller->createView(ViewType::kEditor)); }
    // Waits until everything is painted.
    static void expectReferencePicture(const HostFrame& frame)
    {
        const VSTGUI::Pixels reference = readPng(picturePath("equalisers"));
        const auto masks = textsOfEditor(frame.size.getWidth());
        HostFrame::soon([&] { return difference(frame.picture(), reference, masks).pixels == 0; });
        expectPicture(frame.picture(), "equalisers", masks);
    }

    Module module;
    Instance instance;
};

}  // namespace

TEST_F(View, OpensInAWindowFollowsTheHostAndLeavesNothingBehind)
{
    for (int round = 0; round < 3; ++round) {
        HostFrame frame(open(), {20, 10});
        EXPECT_EQ(frame.size.getWidth(), 394);
        EXPECT_EQ(frame.view->canResize(), kResultFalse);
        ASSERT_EQ(frame.attach(), kResultTrue);
        expectReferencePicture(frame);
        instance.automate(kQB11, 1.0);
        EXPECT_TRUE(frame.soon([&] { return frame.window->childWidth() == 644; }));
        EXPECT_EQ(frame.size.getWidth(), 644);
        instance.automate(kQB11, 0.0);
        EXPECT_EQ(frame.size.getWidth(), 394);
        EXPECT_EQ(frame.attach(), kResultFalse) << "in a second window";
        frame.remove();
        EXPECT_EQ(frame.view->removed(), kResultFalse);
        EXPECT_EQ(frame.window->childWidth(), 0);
        EXPECT_EQ(eventLoop.registrations(false) + eventLoop.registrations(true), 0);
    }
}

// Xlib may read events while it sends a picture; the descriptor then does not become readable, and
// the next tick of a timer handles them.
TEST_F(View, ReportsTheUsersEditsToTheHostAlsoWithoutDescriptors)
{
    HostFrame frame(open(), {20, 10});
    ASSERT_EQ(frame.attach(), kResultTrue);
    EXPECT_EQ(eventLoop.registrations(false), eventLoop.offered ? 1 : 0);
    expectReferencePicture(frame);
    const auto edited = [&](ParamID id) {
        const auto& edits = instance.handler.edits;
        return std::any_of(edits.begin(), edits.end(),
                           [&](const auto& edit) { return edit.first == id; });
    };
    for (const auto turn : {eventLoop.turn, eventLoop.turnTimers}) {
        const int further = frame.size.getWidth() - 394;
        instance.handler.edits.clear();
        instance.handler.begun.clear();
        User::act(
            [&](User& user) {
                user.drag(frame.at({kKnob.x + further / 2, kKnob.y}), 0, -20);
                user.click(frame.at({kKeyOfQB11.x + further, kKeyOfQB11.y}));
            },
            turn);
        EXPECT_TRUE(turnUntil([&] { return edited(kLGainL) && edited(kQB11); }, turn));
        // One for each of the linked knobs.
        EXPECT_EQ(instance.handler.begun, (std::vector<ParamID>{kLGainL, kLGainR, kQB11}));
        EXPECT_TRUE(instance.handler.gestures.empty());
        EXPECT_EQ(frame.size.getWidth(), further ? 394 : 644);
        EXPECT_EQ(frame.window->childWidth(), frame.size.getWidth());
    }
    User::act([&](User& user) { user.click(frame.at(kNextPreset)); }, eventLoop.turn);
    EXPECT_TRUE(frame.soon([&] { return !instance.handler.groups.empty(); }));
    EXPECT_EQ(instance.handler.groups, std::vector<std::size_t>{kPresetParamCount});
}

// The menu then runs the timers that the host's loop runs otherwise.
TEST_F(View, ShowsAStateThatIsLoadedWhileItsMenuIsOpen)
{
    if (!eventLoop.offered)
        GTEST_SKIP() << "the system's menus run its timers";
    const Bytes narrow = instance.controllerState();
    instance.automate(kQB11, 1.0);
    const Bytes wide = instance.controllerState();
    instance.loadControllerState(narrow);
    HostFrame frame(open(), {20, 10});
    ASSERT_EQ(frame.attach(), kResultTrue);
    expectReferencePicture(frame);
    const auto beside = [] { return screenshot({550, 10}, 50, 50); };
    const VSTGUI::Pixels closed = frame.picture(), before = beside();
    User::act(
        [&](User& user) {
            user.click(frame.at(kMenu));
            user.waitFor([&] { return difference(frame.picture(), closed).pixels > 250; });
            instance.loadControllerState(wide);
            EXPECT_TRUE(user.waitFor([&] { return difference(beside(), before).pixels > 0; }));
            user.tap(userinput::Key::Escape);
        },
        eventLoop.turn);
}

TEST_F(View, RefusesHostsWithoutAFrameOrARunLoop)
{
    const IPtr<IPlugView> view = open();
    EXPECT_EQ(view->attached(nullptr, eventLoop.windowType), kResultFalse);
    EXPECT_EQ(view->isPlatformTypeSupported("NSView"), kInvalidArgument);
    EXPECT_EQ(view->removed(), kResultFalse);
    HostFrame frame(view, {20, 10});
    EXPECT_EQ(view->attached(frame.window->handle(), "NSView"), kResultFalse);
    if (!eventLoop.offered)
        return;
    // Refused without a frame and in a frame without a loop; accepted afterwards.
    EXPECT_EQ(view->attached(frame.window->handle(), eventLoop.windowType), kResultFalse);
    frame.offersLoop = false;
    EXPECT_EQ(frame.attach(), kResultFalse);
    EXPECT_EQ(frame.window->childWidth(), 0);
    frame.offersLoop = true;
    EXPECT_EQ(frame.attach(), kResultTrue);
}

TEST_F(View, OneOfTwoKeepsWorkingWhenTheOtherIsClosed)
{
    HostFrame frame(open(), {20, 10}), other(open(), {460, 10});
    ASSERT_EQ(frame.attach(), kResultTrue);
    ASSERT_EQ(other.attach(), kResultTrue);
    expectReferencePicture(frame);
    frame.remove();
    expectReferencePicture(other);
    instance.automate(kQB11, 1.0);
    EXPECT_TRUE(other.soon([&] { return other.window->childWidth() == 644; }));
}

TEST_F(View, FollowsStatesThatAnotherThreadLoads)
{
    const Bytes narrow = instance.controllerState();
    instance.automate(kQB11, 1.0);
    const Bytes wide = instance.controllerState(), component = instance.componentState();
    HostFrame frame(open(), {20, 10});
    ASSERT_EQ(frame.attach(), kResultTrue);
    for (int round = 0; round < std::max(times() / 200, 10); ++round) {
        const auto load = [&](User&) {
            for (const Bytes& state : {narrow, wide, narrow}) {
                instance.loadComponentState(component);
                instance.tellComponentState(component);
                instance.loadControllerState(state);
                instance.controllerState();
                instance.componentState();
            }
            if (round % 2)
                instance.loadControllerState(wide);
        };
        User::act(load, eventLoop.turn);
        const int32 width = round % 2 ? 644 : 394;
        EXPECT_TRUE(frame.soon([&] { return frame.window->childWidth() == width; })) << round;
        EXPECT_EQ(frame.size.getWidth(), width);
    }
}

// Windows belong to the thread that creates them, but on X11 to the one that runs the loop.
TEST_F(View, ClosesAtOnceOnTheThreadOfTheLoopThatDidNotOpenIt)
{
    if (!eventLoop.offered)
        GTEST_SKIP() << "the system ends windows with their thread";
    HostFrame frame(open(), {20, 10});
    std::thread([&] { ASSERT_EQ(frame.attach(), kResultTrue); }).join();
    expectReferencePicture(frame);
    instance.automate(kQB11, 1.0);
    EXPECT_TRUE(frame.soon([&] { return frame.window->childWidth() == 644; }));
    frame.remove();
    EXPECT_EQ(frame.window->childWidth(), 0);
    EXPECT_EQ(eventLoop.registrations(false) + eventLoop.registrations(true), 0);
    // Removed on another thread, the view can be opened again and still resizes its window.
    ASSERT_EQ(frame.attach(), kResultTrue);
    std::thread([&] { frame.remove(); }).join();
    EXPECT_TRUE(frame.soon([&] { return frame.window->childWidth() == 0; }));
    ASSERT_EQ(frame.attach(), kResultTrue);
    instance.automate(kQB11, 0.0);
    EXPECT_TRUE(frame.soon([&] { return frame.size.getWidth() == 394; }));
}

// The first view is not removed, and the other one keeps its controller alive.
TEST_F(View, LeavesNothingBehindInAnyOrderOfRelease)
{
    IPtr<IPlugView> view;
    {
        Instance passing(module);
        view = owned(passing.controller->createView(ViewType::kEditor));
        HostFrame hurried(open(), {20, 10}), frame(view, {460, 10});
        ASSERT_EQ(hurried.attach(), kResultTrue);
        ASSERT_EQ(frame.attach(), kResultTrue);
        hurried.forget();
    }
    ViewRect size;
    EXPECT_EQ(view->getSize(&size), kResultTrue);
    EXPECT_EQ(eventLoop.registrations(false) + eventLoop.registrations(true), 0);
    instance.automate(kLGainL, 0.9);
    for (int turn = 0; turn < 20; ++turn)
        eventLoop.turn();
}
