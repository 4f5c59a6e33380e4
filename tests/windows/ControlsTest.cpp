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
        host->resizes = 0;
    }
};

TEST_F(Controls, ButtonsAndTheSwitchEditTheirParameterInOneGesture)
{
    constexpr struct {
        unsigned id;
        double x, y;  // x of a negative number counts from the right edge
        float value;
        int width, resizes;  // then
    } kPresses[] = {
        {kPower, -62, 425, 0, 894, 0},   {kMS, 200, 470, 1, 894, 0},  // the channels' names
        {kPower, -62, 425, 1, 894, 0},   {kBpsCh1, -62, 290, 1, 894, 0},
        {kPhaseL, 125, 369, 1, 894, 0},  {kProcR2, 778, 406, 0, 894, 0},
        {kChannel, -62, 180, 0, 894, 0}, {kChannel, -62, 255, 1, 894, 0},
        {kLink, -62, 30, 1, 894, 0},     {kQB11, -62, 104, 0, 644, 1},
        {k2x, -62, 67, 0, 394, 2},       {kQB11, -62, 104, 1, 644, 3},
        {k2x, -62, 67, 1, 894, 4},
    };
    for (const auto& press : kPresses) {
        SCOPED_TRACE(testing::Message() << press.id << " to " << press.value);
        const Place place = host->at(press.x < 0 ? host->width + press.x : press.x, press.y);
        Host::user([&](User& user) { user.click(place); });
        EXPECT_EQ(host->value(press.id), press.value);
        EXPECT_EQ(host->heard(), gesture(press.id));
        EXPECT_EQ(host->width, press.width);
        EXPECT_EQ(host->window->childWidth(), press.width);
        EXPECT_EQ(host->resizes, press.resizes);
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
    Host::user([&](User& user) { user.drag(knob, 0, -20); });
    EXPECT_NEAR(host->value(kLGainL2), 0.6, 0.01);
    EXPECT_NEAR(host->value(kLGainR2), 0.5, 0.01);
    Host::user([&](User& user) {
        user.moveTo(knob);
        user.holdingControl([&] { user.drag(knob, 0, -4); });
    });
    EXPECT_EQ(host->value(kLGainL2), host->value(kLGainR2));
}

}  // namespace
