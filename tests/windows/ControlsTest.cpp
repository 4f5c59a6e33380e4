// One control of each kind by its place on the screen, under a real mouse, and what the host hears
// of it.
#include "EditorOnScreen.h"

namespace {

struct Controls : EditorOnScreen {
    // All strips in a window of 894 pixels.
    Controls()
    {
        host->automate(kQB11, 1);
        host->automate(k2x, 1);
        EXPECT_TRUE(Host::soon([this] { return host->width == 894; }));
        Host::idleFor(60);
        host->heard();
    }
};

TEST_F(Controls, ButtonsAndTheSwitchEditTheirParameterInOneGesture)
{
    const struct {
        unsigned id;
        Place at;
        float value;
    } presses[] = {
        {kPower, host->panel(27, 425), 0},   {kMS, host->at(200, 470), 1},  // the channels' names
        {kPower, host->panel(27, 425), 1},   {kBpsCh1, host->panel(27, 290), 1},
        {kPhaseL, host->at(125, 369), 1},    {kProcR2, host->at(778, 406), 0},
        {kChannel, host->panel(27, 180), 0}, {kChannel, host->panel(27, 255), 1},
        {kLink, host->panel(27, 30), 1},
    };
    for (const auto& press : presses) {
        SCOPED_TRACE(press.id);
        Host::user([&](User& user) { user.click(press.at); });
        EXPECT_EQ(host->value(press.id), press.value);
        EXPECT_EQ(host->heard(), gesture(press.id));
    }
}

TEST_F(Controls, AKnobItsRingAndItsLabelsTakeDragsClicksAndTheWheel)
{
    const Place knob = host->at(742, 294), ring{knob.x + 28, knob.y}, third{knob.x + 50, knob.y},
                off{knob.x, knob.y - 41}, highPass = host->at(105, 191);
    const struct {
        const char* what;
        std::function<void(User&)> action;
        unsigned id;
        double value, tolerance;
    } steps[] = {
        // 20 pixels of 200; the law is near the identity.
        {"drag the knob", [&](User& u) { u.drag(knob, 0, -20); }, kLGainR2, 0.6, 0.01},
        {"drag the ring", [&](User& u) { u.drag(ring, 0, -24); }, kLFreqR2, 24.0 / 96, 1e-6},
        {"click a label", [&](User& u) { u.click(third); }, kLFreqR2, 3 / 9.0, 1e-6},
        {"click on off", [&](User& u) { u.click(off); }, kLFreqR2, 0, 0},
        {"ring's wheel", [&](User& u) { u.wheel(ring, true); }, kLFreqR2, 1 / 9.0, 1e-6},
        {"knob's wheel", [&](User& u) { u.wheel(knob, false); }, kLGainR2, 0.6 - 1 / 32.0, 0.01},
        {"double click", [&](User& u) { u.doubleClick(knob); }, kLGainR2, 0.5, 1e-3},
        {"on the ring", [&](User& u) { u.doubleClick(ring); }, kLFreqR2, 0, 0},
        // Below off comes the last step.
        {"the dial's wheel", [&](User& u) { u.wheel(highPass, false); }, kHpfL, 1, 0},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.what);
        Host::user(step.action);
        EXPECT_NEAR(host->value(step.id), step.value, step.tolerance);
    }
    // Linked channels keep their distance until Control clears it.
    host->automate(kLGainR2, 0.4);
    host->automate(kLink, 1);
    Host::idleFor(60);
    host->heard();
    Host::user([&](User& user) { user.drag(knob, 0, -20); });
    EXPECT_NEAR(host->value(kLGainL2), 0.6, 0.01);
    const std::vector<std::string> calls = host->heard();
    ASSERT_GE(calls.size(), 4u);
    EXPECT_EQ(calls.front(), "begin " + std::to_string(kLGainR2));
    EXPECT_EQ(calls.back(), "end " + std::to_string(kLGainR2));
    Host::user([&](User& user) {
        user.moveTo(knob);
        user.holdingControl([&] { user.drag(knob, 0, -4); });
    });
    EXPECT_EQ(host->value(kLGainL2), host->value(kLGainR2));
}

TEST_F(EditorOnScreen, ModuleButtonsResizeTheHostsWindowAndBack)
{
    constexpr struct {
        unsigned id;
        double y;  // of its button
        int width;
    } kSteps[] = {{kQB11, 104, 644}, {k2x, 67, 894}, {kQB11, 104, 644}, {k2x, 67, 394}};
    ASSERT_EQ(host->width, 394);
    for (int turn = 0; turn < 40; ++turn) {
        const auto& step = kSteps[turn % 4];
        Host::user([&, place = host->panel(27, step.y)](User& user) { user.click(place); });
        ASSERT_EQ(host->width, step.width);
        ASSERT_EQ(host->resizes, turn + 1);
        ASSERT_EQ(host->window->childWidth(), step.width);
        ASSERT_EQ(host->heard(), gesture(step.id));
    }
}

}  // namespace
