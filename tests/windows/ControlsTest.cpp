// Every control of the editor by its place on the screen, under a real mouse, and what the host
// hears of it.
#include "EditorOnScreen.h"

#include <algorithm>

namespace {

using Calls = std::vector<std::string>;

// Strips of the widest layout: the id of the first parameter, and where the strip begins.
struct Strip {
    unsigned base;
    double x;
};
constexpr Strip kPreamps[] = {{kDriveL, 42}, {kDriveR, 430}};
constexpr Strip kEqualisers[] = {{kProcL, 167}, {kProcL2, 292}, {kProcR, 555}, {kProcR2, 680}};
constexpr double kTop = 7;

// The knobs of an equaliser: the gain's step from the strip's first id, and the centre.
struct Band {
    unsigned gain;
    double y;
};
constexpr Band kBands[] = {{6, 287.5}, {10, 185.5}, {16, 83.5}};

TEST_F(EditorOnScreen, EveryButtonTogglesItsParameterInOneGesture)
{
    showEverything();
    struct Button {
        unsigned id;
        Place at;
    };
    std::vector<Button> buttons{
        {kPower, host->panel(27, 425)},  {kPower, host->panel(27, 445)},
        {kBpsCh1, host->panel(27, 290)}, {kBpsCh2, host->panel(27, 318)},
        {kMS, host->panel(27, 141)},     {kLink, host->panel(27, 30)},
        {kLink, host->panel(27, 20)},    {kMS, host->at(200, 470)},
    };
    for (const Strip& strip : kPreamps) {
        buttons.push_back({strip.base + 6, host->at(strip.x + 41, kTop + 362)});
        buttons.push_back({strip.base + 8, host->at(strip.x + 83, kTop + 362)});
        buttons.push_back({strip.base + 10, host->at(strip.x + 41, kTop + 398)});
        buttons.push_back({strip.base + 12, host->at(strip.x + 82, kTop + 398)});
    }
    for (const Strip& strip : kEqualisers) {
        buttons.push_back({strip.base, host->at(strip.x + 98, kTop + 399)});
        buttons.push_back({strip.base + 2, host->at(strip.x + 27, kTop + 399)});
        buttons.push_back({strip.base + 12, host->at(strip.x + 62, kTop + 399)});
    }
    for (const Button& button : buttons) {
        SCOPED_TRACE(button.id);
        const float before = host->value(button.id);
        Host::user([&](User& user) { user.click(button.at); });
        EXPECT_EQ(host->value(button.id), 1.0f - before);
        EXPECT_EQ(host->heard(), gesture(button.id, {button.id}));
    }
    // Both bypasses at once, which are no parameter.
    Host::user([&](User& user) { user.click(host->panel(27, 336)); });
    EXPECT_EQ(host->value(kBpsCh1) + host->value(kBpsCh2), 0.0f);
    EXPECT_EQ(host->heard(), (Calls{"change 1", "change 2"}));
    for (const auto& [y, channel] : {std::pair(180, 0.0f), {255, 1.0f}}) {
        Host::user([&, place = host->panel(27, y)](User& user) { user.click(place); });
        EXPECT_EQ(host->value(kChannel), channel);
        EXPECT_EQ(host->heard(), gesture(kChannel, {kChannel}));
    }
}

TEST_F(EditorOnScreen, KnobsAndRingsOfEveryStripEditTheirOwnParameters)
{
    showEverything();
    for (const Strip& strip : kEqualisers)
        for (const Band& band : kBands) {
            const unsigned gain = strip.base + band.gain, frequency = gain - 2;
            SCOPED_TRACE(gain);
            const Place knob = host->at(strip.x + 62.5, kTop + band.y);
            Host::user([&](User& user) { user.drag(knob, 0, -20); });
            // 20 pixels of 200; the law is near the identity.
            EXPECT_NEAR(host->value(gain), 0.6, 0.01);
            EXPECT_EQ(host->value(frequency), 0.0f);
            EXPECT_EQ(host->heard(), gesture(gain, {gain}));
            Host::user([&](User& user) { user.drag({knob.x + 28, knob.y}, 0, -24); });
            EXPECT_NEAR(host->value(frequency), 24.0 / 96, 1e-6);
            EXPECT_NEAR(host->value(gain), 0.6, 0.01);
            EXPECT_EQ(host->heard(), gesture(gain, {frequency}));
        }
    for (std::size_t i = 0; i < std::size(kEqualisers); ++i) {
        const Strip& strip = kEqualisers[i];
        const Band& band = kBands[i % 3];
        const unsigned gain = strip.base + band.gain, frequency = gain - 2;
        SCOPED_TRACE(gain);
        const Place knob = host->at(strip.x + 62.5, kTop + band.y);
        const Place thirdLabel{knob.x + 50, knob.y}, offLabel{knob.x, knob.y - 41};
        const auto doing = [](const std::function<void(User&)>& script, auto&& value) {
            Host::user(script);
            return value();
        };
        const auto frequencyNow = [&] { return host->value(frequency); };
        const auto gainNow = [&] { return host->value(gain); };
        EXPECT_NEAR(doing([&](User& user) { user.click(thirdLabel); }, frequencyNow), 3 / 9.0,
                    1e-6);
        EXPECT_EQ(doing([&](User& user) { user.click(offLabel); }, frequencyNow), 0.0f);
        EXPECT_NEAR(doing([&](User& user) { user.click(offLabel); }, frequencyNow), 3 / 9.0, 1e-6)
            << "off again brings the step back";
        const Place ring{knob.x + 30, knob.y};
        EXPECT_NEAR(doing([&](User& user) { user.wheel(ring, true); }, frequencyNow), 4 / 9.0,
                    1e-6);
        EXPECT_NEAR(doing([&](User& user) { user.wheel(knob, false); }, gainNow), 0.6 - 1 / 32.0,
                    0.01);
        EXPECT_NEAR(doing([&](User& user) { user.doubleClick(knob); }, gainNow), 0.5, 1e-3);
        EXPECT_EQ(doing([&](User& user) { user.doubleClick(ring); }, frequencyNow), 0.0f);
    }
}

TEST_F(EditorOnScreen, PreampKnobsAndTheDialThatWrapsAround)
{
    showEverything();
    for (const Strip& strip : kPreamps) {
        SCOPED_TRACE(strip.base);
        host->heard();
        const Place drive = host->at(strip.x + 63, kTop + 85);
        const Place highPass = host->at(strip.x + 63, kTop + 184);
        const Place output = host->at(strip.x + 63, kTop + 286);
        Host::user([&](User& user) { user.drag(drive, 0, -30); });
        EXPECT_GT(host->value(strip.base), 0.55f);
        EXPECT_EQ(host->heard(), gesture(strip.base, {strip.base}));
        Host::user([&](User& user) { user.drag(output, 0, 30); });
        EXPECT_LT(host->value(strip.base + 4), 0.45f);
        Host::user([&](User& user) { user.wheel(highPass, false); });
        EXPECT_EQ(host->value(strip.base + 2), 1.0f) << "below off comes the last step";
        Host::user([&](User& user) { user.wheel(highPass, true); });
        EXPECT_EQ(host->value(strip.base + 2), 0.0f);
        Host::user([&](User& user) { user.click(host->at(strip.x + 107, kTop + 188)); });
        EXPECT_NEAR(host->value(strip.base + 2), 3.0 / 11, 1e-6) << "the label of step 3";
    }
}

TEST_F(EditorOnScreen, LinkedChannelsKeepTheirDistanceUntilControlClearsIt)
{
    showEverything();
    host->automate(kLGainL, 0.6);
    host->automate(kLGainR, 0.5);
    Host::idleFor(60);
    Host::user([&](User& user) { user.click(host->panel(27, 30)); });
    ASSERT_EQ(host->value(kLink), 1.0f);
    host->heard();
    const Place left = host->at(167 + 62.5, kTop + 287.5),
                right = host->at(555 + 62.5, kTop + 287.5);
    Host::user([&](User& user) { user.drag(left, 0, -20); });
    EXPECT_NEAR(host->value(kLGainR), 0.6, 0.01);
    EXPECT_NEAR(host->value(kLGainL) - host->value(kLGainR), 0.1, 1e-6);
    const Calls calls = host->heard();
    ASSERT_GE(calls.size(), 4u);
    EXPECT_EQ(calls.front(), "begin 28");
    EXPECT_EQ(calls.back(), "end 28");
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "change 28"),
              std::count(calls.begin(), calls.end(), "change 29"));
    Host::user([&](User& user) { user.drag(right, 0, 140); });
    EXPECT_NEAR(host->value(kLGainR), 0.0, 0.002);
    EXPECT_NEAR(host->value(kLGainL), 0.1, 0.002);
    Host::user([&](User& user) { user.drag(left, 0, 30); });
    EXPECT_NEAR(host->value(kLGainL), 0.0, 0.01);
    EXPECT_EQ(host->value(kLGainR), 0.0f) << "the partner stands at its limit";
    Host::user([&](User& user) { user.drag(left, 0, -40); });
    EXPECT_NEAR(host->value(kLGainL) - host->value(kLGainR), 0.1, 1e-6) << "the distance is back";
    Host::user([&](User& user) {
        user.moveTo(left);
        user.holdingControl([&] { user.drag(left, 0, -4); });
    });
    EXPECT_EQ(host->value(kLGainL), host->value(kLGainR));
    Host::user([&](User& user) { user.drag(right, 0, -4); });
    EXPECT_EQ(host->value(kLGainL), host->value(kLGainR)) << "the distance stays gone";
    Host::user([&](User& user) { user.drag({left.x + 28, left.y}, 0, -24); });
    EXPECT_NEAR(host->value(kLFreqL), 0.25, 1e-6);
    EXPECT_EQ(host->value(kLFreqR), host->value(kLFreqL)) << "rings are linked, too";
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
