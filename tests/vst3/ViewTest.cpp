// The bundle's editor in windows of VST 3 hosts.
#include "Times.h"
#include "HostFrame.h"
#include "ParameterIds.h"
#include "Pictures.h"

#include <algorithm>
#include <atomic>
#include <thread>

using namespace vst3;
using VSTGUI::Pixels;

namespace {

// The key of `QB11` and the low band's knob, in the smallest layout.
constexpr Place kKeyOfQB11{332, 104}, kKnob{104, 294};

class View : public testing::Test {
protected:
    View() : instance(module) { instance.start(); }
    IPtr<IPlugView> open() { return owned(instance.controller->createView(ViewType::kEditor)); }
    static Pixels picture(const HostFrame& frame)
    {
        return screenshot(frame.corner, frame.size.getWidth(), frame.size.getHeight());
    }
    static std::size_t coloursOf(const HostFrame& frame)
    {
        const Pixels seen = picture(frame);
        std::vector<int> colours;
        for (int y = 0; y < seen.height; y += 3)
            for (int x = 0; x < seen.width; x += 3) {
                const auto colour = seen.at(x, y);
                colours.push_back(colour.red << 16 | colour.green << 8 | colour.blue);
            }
        std::sort(colours.begin(), colours.end());
        return static_cast<std::size_t>(std::unique(colours.begin(), colours.end())
                                        - colours.begin());
    }
    // A user at work while the host's loop goes on.
    static bool act(HostFrame& frame, Place place, bool wheel,
                    const std::function<bool()>& condition)
    {
        std::thread user([=, corner = frame.corner] {
            const auto wait = [] { std::this_thread::sleep_for(std::chrono::milliseconds(60)); };
            hands::movePointer({corner.x + place.x, corner.y + place.y});
            wait();
            if (wheel)
                return hands::wheel(true);
            hands::button(hands::Button::Left, true);
            wait();
            hands::button(hands::Button::Left, false);
        });
        const bool held = frame.soon(condition);
        user.join();
        return held;
    }

    Module module;
    Instance instance;
};

}  // namespace

TEST_F(View, OpensInAWindowFollowsTheHostAndLeavesNothing)
{
    for (int round = 0; round < 3; ++round) {
        HostFrame frame(open(), {20, 10});
        EXPECT_EQ(frame.size.getWidth(), 394);
        EXPECT_EQ(frame.view->canResize(), kResultFalse);
        ASSERT_EQ(frame.attach(), kResultTrue);
        EXPECT_TRUE(frame.soon([&] { return coloursOf(frame) > 200; }));
        instance.automate(kQB11, 1.0);
        EXPECT_TRUE(frame.soon([&] { return frame.window->childWidth() == 644; }));
        EXPECT_EQ(frame.size.getWidth(), 644);
        instance.automate(kQB11, 0.0);
        EXPECT_EQ(frame.size.getWidth(), 394);
        EXPECT_EQ(frame.attach(), kResultFalse) << "in a second window";
        frame.remove();
        EXPECT_EQ(frame.view->removed(), kResultFalse);
        EXPECT_EQ(frame.window->childWidth(), 0);
        EXPECT_EQ(registrations(), 0u);
    }
}

TEST_F(View, TellsBeforeItIsOpenedTheSizeThatItWouldOpenWith)
{
    const IPtr<IPlugView> view = open();
    ViewRect size;
    for (const int32 width : {644, 394}) {
        instance.automate(kQB11, width == 644);
        EXPECT_EQ(view->getSize(&size), kResultTrue);
        EXPECT_EQ(size.getWidth(), width);
    }
}

TEST_F(View, TellsTheHostOfTheUsersHands)
{
    HostFrame frame(open(), {20, 10});
    ASSERT_EQ(frame.attach(), kResultTrue);
    instance.handler.edits.clear();
    const auto edited = [&](ParamID id) {
        const auto& edits = instance.handler.edits;
        return std::any_of(edits.begin(), edits.end(),
                           [&](const auto& edit) { return edit.first == id; });
    };
    EXPECT_TRUE(act(frame, kKnob, true, [&] { return edited(kLGainL); }));
    EXPECT_TRUE(act(frame, kKeyOfQB11, false, [&] { return edited(kQB11); }));
    EXPECT_TRUE(frame.soon([&] { return frame.window->childWidth() == 644; }));
}

TEST_F(View, RefusesHostsInWhichItCannotLive)
{
    const IPtr<IPlugView> view = open();
    EXPECT_EQ(view->attached(nullptr, windowType()), kResultFalse);
    EXPECT_EQ(view->isPlatformTypeSupported("NSView"), kInvalidArgument);
    EXPECT_EQ(view->removed(), kResultFalse);
    HostFrame frame(view, {20, 10});
    EXPECT_EQ(view->attached(frame.window->handle(), "NSView"), kResultFalse);
    if (!eventLoop())
        return;
    // Neither without a frame nor in one without a loop; then all is well.
    EXPECT_EQ(view->attached(frame.window->handle(), windowType()), kResultFalse);
    frame.offersLoop = false;
    EXPECT_EQ(frame.attach(), kResultFalse);
    EXPECT_EQ(frame.window->childWidth(), 0);
    frame.offersLoop = true;
    EXPECT_EQ(frame.attach(), kResultTrue);
}

TEST_F(View, OneOfTwoGoesOnWhenTheOtherIsClosed)
{
    Instance second(module);
    second.start();
    HostFrame frame(open(), {20, 10});
    HostFrame other(owned(second.controller->createView(ViewType::kEditor)), {460, 10});
    ASSERT_EQ(frame.attach(), kResultTrue);
    ASSERT_EQ(other.attach(), kResultTrue);
    EXPECT_TRUE(other.soon([&] { return coloursOf(frame) > 200 && coloursOf(other) > 200; }));
    frame.remove();
    const Pixels before = picture(other);
    second.automate(kLGainL, 0.9);
    EXPECT_TRUE(other.soon([&] { return difference(picture(other), before) > 0.0; }));
}

TEST_F(View, FollowsStatesThatAnotherThreadLoads)
{
    const Bytes narrow = instance.controllerState();
    instance.automate(kQB11, 1.0);
    const Bytes wide = instance.controllerState(), component = instance.componentState();
    HostFrame frame(open(), {20, 10});
    ASSERT_EQ(frame.attach(), kResultTrue);
    for (int round = 0; round < std::max(times() / 200, 10); ++round) {
        std::atomic<bool> done{false};
        std::thread worker([&] {
            for (const Bytes& state : {narrow, wide, narrow}) {
                instance.loadComponentState(component);
                instance.tellComponentState(component);
                instance.loadControllerState(state);
                instance.controllerState();
                instance.componentState();
            }
            if (round % 2)
                instance.loadControllerState(wide);
            done = true;
        });
        EXPECT_TRUE(frame.soon([&] { return done.load(); }));
        worker.join();
        const int32 width = round % 2 ? 644 : 394;
        EXPECT_TRUE(frame.soon([&] { return frame.window->childWidth() == width; })) << round;
        EXPECT_EQ(frame.size.getWidth(), width);
    }
}

TEST_F(View, LetGoWhileOpenItLeavesNothing)
{
    {
        HostFrame frame(open(), {20, 10});
        ASSERT_EQ(frame.attach(), kResultTrue);
        frame.forget();
    }
    EXPECT_EQ(registrations(), 0u);
    instance.automate(kLGainL, 0.9);
    for (int turn = 0; turn < 20; ++turn)
        turnLoop();
}

// The view keeps the controller alive.
TEST_F(View, OutlivesWhatTheHostLetsGoFirst)
{
    IPtr<IPlugView> view;
    {
        Instance passing(module);
        view = owned(passing.controller->createView(ViewType::kEditor));
        HostFrame frame(view, {20, 10});
        ASSERT_EQ(frame.attach(), kResultTrue);
    }
    ViewRect size;
    EXPECT_EQ(view->getSize(&size), kResultTrue);
}
