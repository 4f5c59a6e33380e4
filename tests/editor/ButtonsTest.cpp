// Buttons and switches in use: held, hovered, half on, and turned by the wheel.
#include "tests/editor/EditorStage.h"

using namespace VSTGUI;

namespace {

TEST_F(Editor, AButtonActsOnThePressAndIsOnFromOneHalf)
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

TEST_F(Editor, TheChannelSwitchStepsByPressAndWheelAndOnlyWithPower)
{
    const CRect rect = control(kChannel).rect;
    const auto position = [&](double y) { return CPoint(rect.left + 4, rect.top + y); };
    for (int step = 4; step >= 0; --step) {
        window->click(position(rect.getHeight() * (step + 0.5) / 5));
        EXPECT_EQ(value(kChannel), step / 4.0);
        EXPECT_EQ(heard(), gesture(kChannel, {kChannel}));
    }
    for (const int32_t button : {kRButton, kMButton})
        window->click(position(50), button);
    EXPECT_EQ(heard(), Calls{});
    set(kChannel, 1);
    window->click(position(50), kLButton | kControl);
    EXPECT_EQ(value(kChannel), 0) << "its default";
    EXPECT_EQ(heard(), gesture(kChannel, {kChannel}));
    constexpr struct {
        double before;
        float distance;
        double value;
    } kNotches[] = {
        {0, -0.1f, 0}, {0, -0.2f, 0.25}, {0.25, -3, 0.5}, {0.5, 0.1f, 0.5}, {0.5, 1, 0.25},
        {0, 1, 0},     {0.75, -1, 1},    {1, -1, 1},      {0.6, -1, 0.75},  // between positions:
                                                                            // (0.6 + 0.25) * 4 +
                                                                            // 0.5 = 3.9
    };
    for (const auto& notch : kNotches) {
        SCOPED_TRACE(testing::Message() << notch.distance << " from " << notch.before);
        set(kChannel, notch.before);
        window->screen.paint();
        heard();
        EXPECT_TRUE(window->screen.wheel(position(9), notch.distance));
        EXPECT_EQ(value(kChannel), notch.value);
        EXPECT_EQ(heard(), notch.before == notch.value ? Calls{} : Calls{"perform 3"});
    }
    window->screen.mouseDown(position(9));
    set(kPower, 0);
    window->screen.mouseMove(position(60), kLButton);
    window->screen.mouseUp(position(60));
    EXPECT_EQ(heard(), gesture(kChannel, {kChannel})) << "power switched off in a drag";
    EXPECT_EQ(value(kChannel), 0);
    window->drag(position(60), {0, -51});
    EXPECT_TRUE(window->screen.wheel(position(9), -1));
    EXPECT_EQ(heard(), Calls{});
    expectShown();
}

// The frame that a momentary button shows, with the mouse in the window.
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
    // The info button has a hover frame but no pressed one.
    window->screen.mouseMove(at(kTagInfo));
    window->screen.mouseDown(at(kTagInfo));
    Look info = showing(kTagInfo, 1);
    info.latency = "Latency: 2.18 ms, 96 samples";
    expectShown(info);
}

TEST_F(Editor, TheManualButtonIsReleasedByAMessage)
{
    std::string seen;
    window->screen.onMessage = [&](const std::string& text, const std::string&) { seen = text; };
    window->screen.mouseMove(at(kManualTag));
    window->screen.mouseDown(at(kManualTag));
    for (int tick = 0; tick < 100 && seen.empty(); ++tick)
        clock.advance(50);
    EXPECT_EQ(seen, "Could not open user manual");
    expectShown(showing(kManualTag, 1));
}

TEST_F(Editor, TheRockerShowsItsPressedSideAndReturnsToRestWithoutEffect)
{
    const CRect rect = control(kRockerTag).rect;
    const CPoint left(rect.left + 15, 495), right(rect.left + 16, 495), away(200, 300);
    for (int preset = 1; preset < kPresetCount; ++preset)
        controller.preset(preset) = controller.preset(0);
    controller.setCurrentPreset(5);
    openWindow();
    VSTGUI::OffscreenHost& screen = window->screen;
    const struct {
        const char* what;
        std::function<void()> action;
        int frame, preset;  // expected afterwards; preset 5 before
    } steps[] = {
        {"over the left", [&] { screen.mouseMove(left); }, 1, 5},
        {"over the right", [&] { screen.mouseMove(right); }, 2, 5},
        {"right button", [&] { window->click(right, kRButton); }, 2, 5},
        {"press", [&] { screen.mouseDown(right); }, 4, 6},
        {"drag", [&] { screen.mouseMove(left, kLButton); }, 4, 6},
        {"release", [&] { screen.mouseUp(left); }, 2, 6},  // hover changes only on a move
        {"back over the left", [&] { screen.mouseMove(left); }, 1, 6},
        {"click", [&] { window->click(left); }, 1, 5},
        {"leave", [&] { screen.mouseMove(away); }, 0, 5},
        {"less than a notch", [&] { screen.wheel(left, 0.1f); }, 1, 5},
        {"up", [&] { screen.wheel(left, 1); }, 3, 4},
        {"soon after", [&] { clock.advance(150); }, 3, 4},
        {"down", [&] { screen.wheel(left, -1); }, 4, 5},
        {"soon after that", [&] { clock.advance(150); }, 4, 5},
        {"at rest", [&] { clock.advance(100); }, 1, 5},
        {"up again", [&] { screen.wheel(left, 1); }, 3, 4},
        {"a little later", [&] { clock.advance(100); }, 3, 4},
        {"press before it rests", [&] { screen.mouseDown(right); }, 4, 5},
        {"the press stays", [&] { clock.advance(150); }, 4, 5},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.what);
        step.action();
        EXPECT_EQ(controller.getCurrentPreset(), step.preset);
        expectShown(showing(kRockerTag, step.frame));
    }
}

}  // namespace
