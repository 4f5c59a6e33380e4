// The editor as a whole: layouts, edits and what the host hears of them, the link of the channels,
// hints, the info panel, and several windows of one plug-in.
#include "EditorStage.h"

#include <algorithm>
#include <set>

namespace {

using Calls = std::vector<std::string>;

Calls gesture(ParamID tag, std::initializer_list<ParamID> edited)
{
    Calls calls{"begin " + std::to_string(tag)};
    for (const ParamID id : edited)
        calls.push_back("perform " + std::to_string(id));
    calls.push_back("end " + std::to_string(tag));
    return calls;
}

// Strips of the widest layout: the id of the first parameter, and where the strip begins.
struct Strip {
    ParamID base;
    double x;
};
constexpr Strip kPreamps[] = {{kDriveL, 42}, {kDriveR, 430}};
constexpr Strip kEqualisers[] = {{kProcL, 167}, {kProcR, 555}, {kProcL2, 292}, {kProcR2, 680}};
constexpr double kTop = 7;

TEST_F(Editor, ModuleButtonsResizeTheWindowAndEverythingMovesAlong)
{
    EXPECT_EQ(window->width(), 394);
    // A host makes room for the editor before it is opened.
    const auto unopened = Steinberg::owned(controller.createView("editor"));
    ViewRect told;
    struct Step {
        ParamID id;
        double y;  // of its button
        int width;
    };
    constexpr Step kSteps[] = {
        {kQB11, 104, 644}, {k2x, 67, 894}, {kQB11, 104, 644}, {k2x, 67, 394}};
    for (int round = 0; round < 20; ++round)
        for (const Step& step : kSteps) {
            window->click(window->panel(27, step.y));
            ASSERT_EQ(window->width(), step.width);
            ASSERT_EQ(window->widths.back(), step.width);
            ASSERT_EQ(heard(), gesture(step.id, {step.id}));
            unopened->getSize(&told);
            ASSERT_EQ(told.getWidth(), step.width);
        }
    controller.setCurrentPreset(19);
    EXPECT_EQ(window->width(), 894) << "a preset opens the strips that it uses";
    window->screen.wheel(window->panel(27, 104), 1.0f);
    EXPECT_EQ(window->width(), 894) << "the wheel resized the window";
    EXPECT_EQ(controller.createView("other"), nullptr);
}

TEST_F(Editor, EveryButtonTogglesItsParameterInOneGesture)
{
    showEverything();
    struct Button {
        ParamID id;
        CPoint at;
    };
    std::vector<Button> buttons{
        {kPower, window->panel(27, 425)},  {kBpsCh1, window->panel(27, 290)},
        {kBpsCh2, window->panel(27, 318)}, {kMS, window->panel(27, 141)},
        {kLink, window->panel(27, 30)},
    };
    for (const Strip& strip : kPreamps)
        for (const Button& button : {Button{6, {41, 362}}, Button{10, {41, 398}},
                                     Button{12, {82, 398}}, Button{8, {83, 362}}})
            buttons.push_back({strip.base + button.id, button.at + CPoint(strip.x, kTop)});
    for (const Strip& strip : kEqualisers)
        for (const Button& button :
             {Button{0, {98, 399}}, Button{2, {27, 399}}, Button{12, {62, 399}}})
            buttons.push_back({strip.base + button.id, button.at + CPoint(strip.x, kTop)});
    for (const Button& button : buttons) {
        SCOPED_TRACE(button.id);
        const double before = value(button.id);
        window->click(button.at);
        EXPECT_EQ(value(button.id), 1.0 - before);
        EXPECT_EQ(heard(), gesture(button.id, {button.id}));
        window->click(button.at);
        EXPECT_EQ(value(button.id), before);
        heard();
    }
    window->click(window->panel(27, 336));  // both bypasses, which are no parameter
    EXPECT_EQ(heard(), (Calls{"perform 1", "perform 2"}));
    window->click(window->panel(27, 290));
    EXPECT_EQ(value(kBpsCh1), 0.0);
    window->click(window->panel(27, 336));
    EXPECT_EQ(value(kBpsCh1) + value(kBpsCh2), 2.0) << "with one on, both go on";
    window->click(window->panel(27, 336));
    EXPECT_EQ(value(kBpsCh1) + value(kBpsCh2), 0.0);

    window->click(window->panel(27, 180));
    EXPECT_EQ(value(kChannel), 0.0);
    set(kPower, 0);
    heard();
    window->click({200, 470});
    EXPECT_EQ(heard(), gesture(kMS, {kMS})) << "the label works without power";
    window->click(window->panel(27, 30));
    EXPECT_TRUE(heard().empty()) << "a locked button was heard";
}

TEST_F(Editor, KnobsEditTheirGainOrTheRingsFrequency)
{
    showEverything();
    for (const Strip& strip : kEqualisers)
        for (const auto& [step, y] :
             {std::pair<ParamID, double>{6, 287.5}, {10, 185.5}, {16, 83.5}}) {
            const ParamID gain = strip.base + step, frequency = gain - 2;
            SCOPED_TRACE(gain);
            const CPoint centre(strip.x + 62.5, kTop + y);
            window->drag(centre, {0, -20});
            // 20 pixels of 200; the law is near the identity.
            EXPECT_NEAR(value(gain), 0.6, 0.01);
            EXPECT_EQ(heard(), gesture(gain, {gain}));
            window->drag(centre + CPoint(28, 0), {0, -24});
            EXPECT_NEAR(value(frequency), 24.0 / 96, 1e-6);
            EXPECT_NEAR(value(gain), 0.6, 0.01);
            EXPECT_EQ(heard(), gesture(gain, {frequency}));

            // The label of step 3, then "off", then "off" again, which brings step 3 back.
            const CPoint view(strip.x + 2, kTop + y - 47.5);
            window->click(view + CPoint(110, 48));
            EXPECT_NEAR(value(frequency), 3.0 / 9, 1e-6);
            window->click(view + CPoint(60, 6));
            EXPECT_EQ(value(frequency), 0.0);
            window->click(view + CPoint(60, 6));
            EXPECT_NEAR(value(frequency), 3.0 / 9, 1e-6);
            window->screen.wheel(centre + CPoint(30, 0), 1.0f);
            EXPECT_NEAR(value(frequency), 4.0 / 9, 1e-6);
            window->screen.wheel(centre, -1.0f);
            EXPECT_NEAR(value(gain), 0.6 - 1.0 / 32, 0.01);
            heard();
            window->doubleClick(centre);
            EXPECT_NEAR(value(gain), 0.5, 1e-3);
            window->doubleClick(centre + CPoint(0, 30));
            EXPECT_EQ(value(frequency), 0.0);
            heard();
        }
    for (const Strip& strip : kPreamps) {
        const CPoint drive(strip.x + 63, kTop + 85), output(strip.x + 63, kTop + 286);
        window->drag(drive, {0, -30});
        EXPECT_GT(value(strip.base), 0.55);
        window->drag(output, {0, 30});
        EXPECT_LT(value(strip.base + 4), 0.45);
        const CPoint highPass(strip.x + 63, kTop + 184);
        window->screen.wheel(highPass, -1.0f);
        EXPECT_NEAR(value(strip.base + 2), 1.0, 1e-6) << "below off comes the last step";
        window->screen.wheel(highPass, 1.0f);
        EXPECT_EQ(value(strip.base + 2), 0.0);
        window->click({strip.x + 7 + 100, kTop + 128 + 60});  // its label of step 3
        EXPECT_NEAR(value(strip.base + 2), 3.0 / 11, 1e-6);
    }
}

TEST_F(Editor, LinkedChannelsKeepTheirDistanceAndSwitchesTheirDifference)
{
    showEverything();
    set(kLGainL, 0.6);
    set(kLGainR, 0.5);
    window->click(window->panel(27, 30));
    ASSERT_EQ(value(kLink), 1.0);
    const CPoint left(167 + 62.5, kTop + 287.5), right(555 + 62.5, kTop + 287.5);
    window->drag(left, {0, -20});
    EXPECT_NEAR(value(kLGainL) - value(kLGainR), 0.1, 1e-6);
    EXPECT_NEAR(value(kLGainR), 0.6, 0.01);
    window->drag(right, {0, 140});
    EXPECT_NEAR(value(kLGainR), 0.0, 0.002);
    EXPECT_NEAR(value(kLGainL), 0.1, 0.002);
    window->drag(left, {0, 30});
    EXPECT_NEAR(value(kLGainL), 0.0, 0.01);
    EXPECT_EQ(value(kLGainR), 0.0) << "the partner stands at its limit";
    window->drag(left, {0, -40});
    EXPECT_NEAR(value(kLGainL) - value(kLGainR), 0.1, 1e-6) << "the distance has come back";
    window->drag(left, {0, -4}, VSTGUI::kControl);
    EXPECT_EQ(value(kLGainL), value(kLGainR));
    window->drag(right, {0, -4});
    EXPECT_EQ(value(kLGainL), value(kLGainR)) << "the distance stays gone";

    const CPoint shelf(167 + 27, kTop + 399);
    window->click(shelf);
    EXPECT_EQ(value(kLShelfR), 1.0);
    controller.host.edits.clear();
    set(kLShelfR, 0.0);
    window->click(shelf);
    EXPECT_EQ(value(kLShelfL), 0.0);
    EXPECT_EQ(value(kLShelfR), 0.0) << "the partner's step down was held at its limit";

    // The distance is taken when LINK goes on.
    set(kLink, 0.0);
    set(kDriveL, 0.4);
    set(kDriveR, 0.9);
    set(kLink, 1.0);
    window->screen.wheel({42 + 63, kTop + 85}, 1.0f);
    EXPECT_NEAR(value(kDriveR) - value(kDriveL), 0.5, 1e-6);
}

TEST_F(Editor, AHostsAutomationMovesTheControlsAndRepaintsNothingElse)
{
    const auto picture = [this] { return window->screen.paint().rgba; };
    const auto before = picture();
    set(kLGainL, 0.9);
    ASSERT_FALSE(window->screen.invalidRects().empty());
    for (const VSTGUI::CRect& rect : window->screen.invalidRects())
        EXPECT_LE(rect.getWidth() * rect.getHeight(), 121.0 * 101.0);
    EXPECT_NE(picture(), before);
    set(kLGainL, 0.5);
    EXPECT_EQ(picture(), before);
}

TEST_F(Editor, TwoWindowsShowTheSameAndOneOutlivesTheOther)
{
    Window second(controller);
    window->click(window->panel(27, 104));
    EXPECT_EQ(second.width(), 644);
    second.drag({167 + 62.5, kTop + 287.5}, {0, -30});
    EXPECT_EQ(window->screen.paint().rgba, second.screen.paint().rgba);
    window->close();
    window->close();
    second.click(second.panel(27, 104));
    EXPECT_EQ(second.width(), 394);
    openWindow();
    second.close();
    set(kPower, 0);
    window->screen.paint();
}

TEST_F(Editor, HintsFollowTheRestingMouse)
{
    showEverything();
    const auto rest = [this](CPoint where) {
        window->screen.setPointer(where);
        clock.advance(100);
        return window->hint();
    };
    EXPECT_EQ(rest({300, 300}), "www.zkr-soundworks.example");
    EXPECT_EQ(rest(window->panel(27, 290)), "Turns off left channel processing.");
    EXPECT_EQ(rest(window->panel(27, 318)), "Turns off right channel processing.");
    EXPECT_EQ(rest(window->panel(27, 104)), "Click to disable and hide QB11s");
    EXPECT_EQ(rest(window->panel(27, 67)), "Click to disable and hide secondary T46s");
    EXPECT_EQ(rest({300, 300}), "www.zkr-soundworks.example");
    rest(window->panel(27, 104));
    set(kQB11, 0);
    EXPECT_EQ(rest(window->panel(27, 104)), "Click to enable QB11s");

    const auto shows = [this](CPoint where) {
        window->screen.paint();
        window->screen.setPointer(where);
        clock.advance(100);
        return !window->screen.invalidRects().empty();
    };
    EXPECT_TRUE(shows({8, 496})) << "the save key lights up under the mouse";
    EXPECT_FALSE(shows({9, 497}));
    EXPECT_TRUE(shows(window->panel(27, 471)));
}

TEST_F(Editor, ALitBypassBreathes)
{
    const auto brightness = [this] {
        clock.advance(100);
        const VSTGUI::Pixels picture = window->screen.paint();
        int sum = 0;
        for (int y = 286; y < 305; ++y)
            for (int x = 310; x < 354; ++x)
                sum += picture.at(x, y).green;
        return sum;
    };
    const int dark = brightness();
    EXPECT_EQ(brightness(), dark);
    set(kBpsCh1, 1);
    std::vector<int> pulse;
    for (int tick = 0; tick < 42; ++tick)
        pulse.push_back(brightness());
    EXPECT_GT(*std::max_element(pulse.begin(), pulse.end()), dark);
    for (std::size_t tick = 2; tick + 14 < pulse.size(); ++tick)
        EXPECT_EQ(pulse[tick], pulse[tick + 14]) << "a pulse takes 1.4 s";
    EXPECT_EQ(std::set<int>(pulse.begin() + 2, pulse.begin() + 16).size(), 13u)
        << "all differ but the two at the height of it, which are full";
    set(kPower, 0);
    EXPECT_EQ(brightness(), brightness());
}

TEST_F(Editor, InfoPanelTellsTheLatencyAndClosesAtAClickOrANewSize)
{
    const auto background = window->screen.paint().rgba;
    const auto toggle = [this] { window->click(window->panel(27, 471)); };
    toggle();
    const auto shown = window->screen.paint().rgba;
    EXPECT_NE(shown, background);
    set(kLatency, 0.0);
    const auto withoutDelay = window->screen.paint().rgba;
    EXPECT_NE(withoutDelay, shown);
    set(kLatency, 96.0 / 44100.0);
    EXPECT_EQ(window->screen.paint().rgba, shown) << "2.18 ms, 96 samples";
    window->click({200, 200});
    window->screen.mouseMove({200, 200});
    window->screen.setPointer({200, 350});
    clock.advance(100);
    EXPECT_EQ(window->screen.paint().rgba, background);
    EXPECT_TRUE(heard().empty()) << "a host heard of the info panel";
    toggle();
    set(kQB11, 1);
    set(kQB11, 0);
    toggle();
    EXPECT_EQ(window->screen.paint().rgba, shown) << "a new size did not close the panel";
}

// All over the widest layout.
TEST_F(Editor, TheMouseReachesNothingUnderTheInfoPanel)
{
    showEverything();
    window->screen.onMenu = [](VSTGUI::COptionMenu&) {
        ADD_FAILURE() << "the menu opened";
        return 3;
    };
    window->screen.onFileDialog = [](const VSTGUI::FileDialogRequest&) {
        ADD_FAILURE() << "a dialog opened";
        return std::vector<std::string>{};
    };
    const CPoint info = window->panel(27, 471);
    window->click(info);
    const auto shown = window->screen.paint().rgba;
    heard();
    int turned = 0;
    for (double y = 4; y < 505; y += 8)
        for (double x = 4; x < 894; x += 8) {
            for (const float distance : {1.0f, -1.0f})
                turned += window->screen.wheel({x, y}, distance);
            for (const int32_t button : {VSTGUI::kRButton, VSTGUI::kMButton}) {
                window->screen.mouseDown({x, y}, button);
                window->screen.mouseMove({x + 3, y - 9}, button);
                window->screen.mouseUp({x + 3, y - 9}, button);
            }
        }
    EXPECT_EQ(turned, 0);
    EXPECT_EQ(heard(), Calls{});
    EXPECT_EQ(window->screen.paint().rgba, shown);

    // A double or triple click closes it and does no more.
    const CPoint places[] = {{167 + 62.5, kTop + 287.5},  // knob
                             {167 + 90.5, kTop + 287.5},  // ring
                             {167 + 112, kTop + 288},     // label of a step
                             {167 + 98, kTop + 399},      // EQ IN
                             {42 + 63, kTop + 85},        // DRIVE
                             window->panel(27, 425),      // POWER
                             window->panel(27, 104),      // QB11
                             {200, 470},                  // channel label
                             {197, 496},                  // name
                             {264, 494},                  // menu
                             {297, 496},                  // rocker
                             {59, 496},                   // load bank
                             {310, 496}};                 // store A
    for (const CPoint& place : places) {
        SCOPED_TRACE(testing::Message() << place.x << ", " << place.y);
        window->doubleClick(place);
        window->click(place);
        EXPECT_NE(window->screen.paint().rgba, shown);
        EXPECT_EQ(window->screen.textBoxText(), nullptr);
        EXPECT_EQ(heard(), Calls{});
        window->click(info);
        EXPECT_EQ(window->screen.paint().rgba, shown);
    }
    EXPECT_EQ(controller.getCurrentPreset(), 0);
}

TEST_F(Editor, TheChannelLabelTakesClicksWhereItIsDrawn)
{
    const std::pair<double, double> layouts[] = {{0, 304}, {1, 554}, {2, 554}, {3, 804}};
    for (const auto& [mode, right] : layouts) {
        SCOPED_TRACE(mode);
        set(kQB11, mode == 1 || mode == 3);
        set(k2x, mode > 1);
        heard();
        for (const double x : {33.0, right - 1}) {
            window->click({x, 470});
            EXPECT_EQ(heard(), gesture(kMS, {kMS})) << x;
        }
        for (const double x : {32.0, right}) {
            window->click({x, 470});
            EXPECT_EQ(heard(), Calls{}) << x;
        }
    }
}

TEST_F(Editor, AllMouseEventsGoToTheFramesMouseViewWhileThereIsOne)
{
    struct MouseLog : VSTGUI::CView {
        using CView::CView;
        VSTGUI::CMouseEventResult note(const char* event)
        {
            log.push_back(event);
            return VSTGUI::kMouseEventHandled;
        }
        using Buttons = const VSTGUI::CButtonState;
        VSTGUI::CMouseEventResult onMouseDown(CPoint&, Buttons&) override { return note("down"); }
        VSTGUI::CMouseEventResult onMouseUp(CPoint&, Buttons&) override { return note("up"); }
        VSTGUI::CMouseEventResult onMouseMoved(CPoint&, Buttons&) override { return note("move"); }
        VSTGUI::CMouseEventResult onMouseEntered(CPoint&, Buttons&) override
        {
            return note("enter");
        }
        VSTGUI::CMouseEventResult onMouseExited(CPoint&, Buttons&) override { return note("exit"); }
        using CView::onWheel;
        bool onWheel(const CPoint&, const float&, Buttons&) override { return note("wheel") == 0; }
        Calls log;
    };
    const auto view = VSTGUI::owned(new MouseLog(VSTGUI::CRect(0, 0, 1, 1)));
    auto* const frame = dynamic_cast<ZKRFrame*>(window->frame());
    CPoint knob(42 + 62.5, kTop + 287.5);
    set(kLink, 0);
    heard();
    window->screen.mouseDown(knob);
    frame->setMouseView(view);
    EXPECT_EQ(heard(), gesture(kLGainL, {kLGainL})) << "the drag ends";
    window->drag(knob, {0, -4});
    window->screen.wheel(knob, 1);
    window->screen.mouseExit(knob);
    frame->onMouseEntered(knob, VSTGUI::CButtonState());
    window->screen.mouseDown(knob);
    window->screen.mouseCancel();
    EXPECT_EQ(view->log,
              (Calls{"down", "move", "move", "move", "move", "up", "wheel", "exit", "enter", "down",
                     "up"}));
    EXPECT_EQ(heard(), Calls{});
    frame->setMouseView(nullptr);
    window->screen.wheel(knob, 1);
    EXPECT_EQ(heard(), gesture(kLGainL, {kLGainL}));
}

TEST_F(Editor, OpensAndClosesAHundredTimesInTheMiddleOfThings)
{
    for (int round = 0; round < 100; ++round) {
        switch (round % 4) {
        case 0:
            window->screen.mouseDown({42 + 62.5, kTop + 287.5});
            break;
        case 1:
            window->click({200, 496});
            window->screen.typeText(("Round " + std::to_string(round)).c_str());
            break;
        case 2:
            window->screen.onMenu = [this](VSTGUI::COptionMenu&) {
                window->close();
                return 3;
            };
            window->screen.mouseDown({264, 494});
            break;
        default:
            window->click(window->panel(27, 471));
        }
        openWindow();
    }
    EXPECT_EQ(controller.name(controller.getCurrentPreset()), "Round 97")
        << "a name that was being typed is taken over when the window closes";
}

}  // namespace
