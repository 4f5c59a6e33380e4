// One control of each kind by its place on the screen, under a real mouse, and what the host hears
// of it.
#include "EditorOnScreen.h"

#include <algorithm>

namespace {

using Calls = std::vector<std::string>;

// Where the strips of the widest layout begin, and the centre of an equaliser's low band in them.
constexpr double kLeftPreamp = 42, kLeft = 167, kRight = 555, kSecondRight = 680, kTop = 7;
constexpr double kKnobX = 62.5, kKnobY = kTop + 287.5;

TEST_F(EditorOnScreen, ButtonsAndTheSwitchEditTheirParameterInOneGesture)
{
    showEverything();
    const struct {
        unsigned id;
        Place at;
        float value;
    } presses[] = {
        {kPower, host->panel(27, 425), 0},
        {kMS, host->at(200, 470), 1},  // the channels' names
        {kPower, host->panel(27, 425), 1},
        {kBpsCh1, host->panel(27, 290), 1},
        {kPhaseL, host->at(kLeftPreamp + 83, kTop + 362), 1},
        {kProcR2, host->at(kSecondRight + 98, kTop + 399), 0},
        {kChannel, host->panel(27, 180), 0},
        {kChannel, host->panel(27, 255), 1},
        {kLink, host->panel(27, 30), 1},
    };
    for (const auto& press : presses) {
        SCOPED_TRACE(press.id);
        Host::user([&](User& user) { user.click(press.at); });
        EXPECT_EQ(host->value(press.id), press.value);
        EXPECT_EQ(host->heard(), gesture(press.id, {press.id}));
    }
}

TEST_F(EditorOnScreen, AKnobItsRingAndItsLabelsTakeDragsClicksAndTheWheel)
{
    showEverything();
    const Place knob = host->at(kSecondRight + kKnobX, kKnobY), ring{knob.x + 28, knob.y},
                thirdLabel{knob.x + 50, knob.y}, offLabel{knob.x, knob.y - 41};
    const auto gainAfter = [&](const std::function<void(User&)>& script) {
        Host::user(script);
        return host->value(kLGainR2);
    };
    const auto frequencyAfter = [&](const std::function<void(User&)>& script) {
        Host::user(script);
        return host->value(kLFreqR2);
    };
    // 20 pixels of 200; the law is near the identity.
    EXPECT_NEAR(gainAfter([&](User& user) { user.drag(knob, 0, -20); }), 0.6, 0.01);
    EXPECT_EQ(host->heard(), gesture(kLGainR2, {kLGainR2}));
    EXPECT_NEAR(frequencyAfter([&](User& user) { user.drag(ring, 0, -24); }), 24.0 / 96, 1e-6);
    EXPECT_EQ(host->heard(), gesture(kLGainR2, {kLFreqR2}));
    EXPECT_NEAR(frequencyAfter([&](User& user) { user.click(thirdLabel); }), 3 / 9.0, 1e-6);
    EXPECT_EQ(frequencyAfter([&](User& user) { user.click(offLabel); }), 0.0f);
    EXPECT_NEAR(frequencyAfter([&](User& user) { user.wheel(ring, true); }), 1 / 9.0, 1e-6);
    EXPECT_NEAR(gainAfter([&](User& user) { user.wheel(knob, false); }), 0.6 - 1 / 32.0, 0.01);
    EXPECT_NEAR(gainAfter([&](User& user) { user.doubleClick(knob); }), 0.5, 1e-3);
    EXPECT_EQ(frequencyAfter([&](User& user) { user.doubleClick(ring); }), 0.0f);

    const Place highPass = host->at(kLeftPreamp + 63, kTop + 184);
    Host::user([&](User& user) { user.wheel(highPass, false); });
    EXPECT_EQ(host->value(kHpfL), 1.0f) << "below off comes the last step";
}

TEST_F(EditorOnScreen, LinkedChannelsKeepTheirDistanceUntilControlClearsIt)
{
    showEverything();
    host->automate(kLGainL, 0.6);
    host->automate(kLGainR, 0.5);
    host->automate(kLink, 1);
    Host::idleFor(60);
    host->heard();
    const Place left = host->at(kLeft + kKnobX, kKnobY), right = host->at(kRight + kKnobX, kKnobY);
    Host::user([&](User& user) { user.drag(left, 0, -20); });
    EXPECT_NEAR(host->value(kLGainR), 0.6, 0.01);
    EXPECT_NEAR(host->value(kLGainL) - host->value(kLGainR), 0.1, 1e-6);
    const Calls calls = host->heard();
    ASSERT_GE(calls.size(), 4u);
    EXPECT_EQ(calls.front(), "begin 28");
    EXPECT_EQ(calls.back(), "end 28");
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "change 28"),
              std::count(calls.begin(), calls.end(), "change 29"));
    Host::user([&](User& user) {
        user.moveTo(left);
        user.holdingControl([&] { user.drag(left, 0, -4); });
    });
    EXPECT_EQ(host->value(kLGainL), host->value(kLGainR));
    Host::user([&](User& user) { user.drag(right, 0, -4); });
    EXPECT_EQ(host->value(kLGainL), host->value(kLGainR)) << "the distance stays gone";
}

TEST_F(EditorOnScreen, TheMouseReachesNothingUnderTheInfoPanel)
{
    host->automate(kLGainL, 0.8);
    Host::idleFor(60);
    const Place knob = host->at(42 + kKnobX, kKnobY), power = host->panel(27, 425);
    const VSTGUI::Pixels without = host->picture();
    host->heard();
    for (const Place under : {knob, power}) {
        Host::user([&](User& user) { user.click(host->panel(27, 471)); });
        EXPECT_GT(difference(host->picture(), without), 0.5);
        Host::user([&](User& user) {
            for (const bool up : {false, true}) {
                user.wheel(knob, up);
                user.wheel(power, up);
            }
            user.click(knob, hands::Button::Right);
            // A triple click closes it.
            user.doubleClick(under);
            hands::button(hands::Button::Left, true);
            user.release();
        });
        parkPointer();
        Host::idleFor(150);
        EXPECT_EQ(difference(host->picture(), without), 0.0);
    }
    EXPECT_EQ(host->heard(), Calls{});
}

TEST_F(EditorOnScreen, ModuleButtonsResizeTheHostsWindowAndBack)
{
    struct Step {
        unsigned id;
        double y;  // of its button
        int width;
    };
    constexpr Step kSteps[] = {
        {kQB11, 104, 644}, {k2x, 67, 894}, {kQB11, 104, 644}, {k2x, 67, 394}};
    ASSERT_EQ(host->width, 394);
    for (int round = 0; round < 10; ++round)
        for (const Step& step : kSteps) {
            const int resizes = host->resizes;
            Host::user([&, place = host->panel(27, step.y)](User& user) { user.click(place); });
            ASSERT_EQ(host->width, step.width);
            ASSERT_EQ(host->resizes, resizes + 1);
            ASSERT_EQ(host->window->childWidth(), step.width);
            ASSERT_EQ(host->heard(), gesture(step.id, {step.id}));
        }
}

}  // namespace
