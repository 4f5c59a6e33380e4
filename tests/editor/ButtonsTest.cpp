// Buttons and switches while they are used: what is held, hovered or half on, and how the wheel
// turns what has more than two positions.
#include "EditorStage.h"

#include "CZKROnOffButton.h"

using namespace VSTGUI;

namespace {

TEST_F(Editor, HalfIsOnToTheEyeAndToTheClickAndAPressNeedsNoRelease)
{
    for (const double half : {0.5, 0.49}) {
        set(kMS, half);
        expectShown();
        heard();
        window->screen.mouseDown(at(kMS), kLButton | kShift);
        EXPECT_EQ(value(kMS), half < 0.5);
        EXPECT_EQ(heard(), gesture(kMS, {kMS}));
        window->screen.mouseMove(at(kLink), kLButton);
        window->screen.mouseUp(at(kLink));
        EXPECT_EQ(heard(), Calls{});
    }
}

TEST(OnOffButton, ALatchingWheelTurnsOnOneWayAndOffTheOther)
{
    const auto button = VSTGUI::owned(new CZKROnOffButton(CRect(0, 0, 9, 9), nullptr, 0, nullptr));
    button->setWheelLatching(true);
    for (const float on : {-1.f, 1.f}) {
        SCOPED_TRACE(on);
        button->setWheelInverted(on > 0);
        for (const auto& [turn, value] : {std::pair(-on, 0.f), {on, 1.f}, {on, 1.f}, {-on, 0.f}}) {
            button->onWheel(CPoint(), turn, CButtonState());
            EXPECT_EQ(button->getValue(), value);
        }
    }
}

TEST_F(Editor, TheChannelSwitchStepsByPressAndWheelAndOnlyWithPower)
{
    const CRect rect = control(kChannel).rect;
    const auto position = [&](double y) { return CPoint(rect.left + 4, rect.top + y); };
    for (int step = 4; step >= 0; --step) {
        window->click(position(rect.getHeight() * (step + 0.5) / 5));
        EXPECT_EQ(value(kChannel), step / 4.0);
        EXPECT_EQ(heard(), gesture(kChannel, {kChannel}));
    }
    struct Notch {
        float distance;
        double value;
    };
    for (const Notch& notch : {Notch{-0.1f, 0},
                               {-0.2f, 0.25},
                               {-3, 0.5},
                               {0.1f, 0.5},
                               {1, 0.25},
                               {1, 0},
                               {1, 0},
                               {-1, 0.25},
                               {-1, 0.5},
                               {-1, 0.75},
                               {-1, 1},
                               {-1, 1}}) {
        window->screen.paint();
        const double before = value(kChannel);
        heard();
        EXPECT_TRUE(window->screen.wheel(position(9), notch.distance));
        EXPECT_EQ(value(kChannel), notch.value);
        EXPECT_EQ(heard(), before == notch.value ? Calls{} : Calls{"perform 3"}) << "no gesture";
    }
    set(kChannel, 0.6);  // between positions: (0.6 + 0.25) * 4 + 0.5 = 3.9
    window->screen.wheel(position(9), -1);
    EXPECT_EQ(value(kChannel), 0.75);
    heard();
    window->screen.mouseDown(position(9));
    set(kPower, 0);
    window->screen.mouseMove(position(60), kLButton);
    window->screen.mouseUp(position(60));
    EXPECT_EQ(heard(), gesture(kChannel, {kChannel})) << "power lost in a drag";
    EXPECT_EQ(window->screen.mouseDown(position(60)), kMouseEventHandled);
    window->screen.mouseMove(position(9), kLButton);
    window->screen.mouseUp(position(9));
    EXPECT_TRUE(window->screen.wheel(position(9), -1));
    EXPECT_EQ(heard(), Calls{});
    expectShown();
}

// Of a momentary button, with the mouse in the window.
Look showing(int tag, int frame)
{
    Look look;
    look.frames[tag] = frame;
    return look;
}

TEST_F(Editor, AMomentaryButtonActsOnThePressAndStaysDownWhileHeld)
{
    for (const int tag : {kStoreATag, kStoreBTag, kRecallATag, kRecallBTag}) {
        SCOPED_TRACE(tag);
        store.values.clear();
        window->screen.mouseMove(at(tag));
        expectShown(showing(tag, 1));
        window->screen.mouseDown(at(tag), kRButton);
        expectShown(showing(tag, 1));
        window->screen.mouseUp(at(tag), kRButton);
        EXPECT_TRUE(store.values.empty());
        EXPECT_EQ(window->screen.mouseDown(at(tag), kLButton | kControl), kMouseEventHandled);
        EXPECT_EQ(store.values.size(), tag == kStoreATag || tag == kStoreBTag ? 1u : 0u);
        expectShown(showing(tag, 2));
        window->screen.mouseMove({-500, 45}, kLButton);
        expectShown(showing(tag, 2));
        window->screen.mouseUp({-500, 45});
        expectShown();
        window->screen.mouseDown(at(tag));
        window->screen.mouseCancel();
        window->screen.mouseMove({200, 300});
        expectShown();
    }
    // The info button shows only that the mouse is over it.
    window->screen.mouseMove(at(kTagInfo));
    window->screen.mouseDown(at(kTagInfo));
    Look info = showing(kTagInfo, 1);
    info.latency = "Latency: 2.18 ms, 96 samples";
    expectShown(info);
}

TEST_F(Editor, TheRockerShowsItsSideAndComesToRestSilently)
{
    const CRect rect = control(kRockerTag).rect;
    const CPoint left(rect.left + 15, 495), right(rect.left + 16, 495), away(200, 300);
    const auto expectRocker = [&](int frame, int preset) {
        SCOPED_TRACE(testing::Message() << "frame " << frame << ", preset " << preset);
        EXPECT_EQ(controller.getCurrentPreset(), preset);
        expectShown(showing(kRockerTag, frame));
    };
    for (int preset = 1; preset < kPresetCount; ++preset)
        controller.preset(preset) = controller.preset(0);
    controller.setCurrentPreset(5);
    openWindow();
    window->screen.mouseMove(left);
    expectRocker(1, 5);
    window->screen.mouseMove(right);
    expectRocker(2, 5);
    EXPECT_EQ(window->screen.mouseDown(right, kRButton), kMouseEventNotHandled);
    window->screen.mouseUp(right, kRButton);
    window->screen.mouseDown(right);
    expectRocker(4, 6);
    window->screen.mouseMove(left, kLButton);
    expectRocker(4, 6);
    window->screen.mouseUp(left);
    expectRocker(2, 6);  // no move without a button since
    window->screen.mouseMove(left);
    window->click(left);
    window->click(left);
    expectRocker(1, 4);
    window->screen.mouseMove(away);
    expectRocker(0, 4);

    window->screen.wheel(left, 0.1f);
    expectRocker(1, 4);
    window->screen.wheel(left, 1);
    expectRocker(3, 3);
    clock.advance(150);
    window->screen.wheel(left, -1);
    clock.advance(150);
    expectRocker(4, 4);
    clock.advance(100);
    expectRocker(1, 4);
    // A press soon after the wheel is not undone when that comes to rest.
    window->screen.wheel(left, 1);
    clock.advance(100);
    window->screen.mouseDown(right);
    clock.advance(150);
    expectRocker(4, 4);
}

}  // namespace
