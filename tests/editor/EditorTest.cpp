// The editor as a whole: layouts, edits reported to the host, linked channels, hints, the info
// panel.
#include "tests/editor/EditorStage.h"

#include <algorithm>

using VSTGUI::kControl;

namespace {

TEST_F(Editor, ModuleButtonsResizeTheWindowAndEverythingMovesAlong)
{
    EXPECT_EQ(window->width(), 394);
    // A host asks for the size before it opens the editor.
    const auto unopened = Steinberg::owned(controller.createView("editor"));
    ViewRect told;
    constexpr std::pair<ParamID, int> kSteps[] = {
        {kQB11, 644}, {k2x, 894}, {kQB11, 644}, {k2x, 394}};
    for (int round = 0; round < 20; ++round)
        for (const auto& [id, width] : kSteps) {
            window->click(at(id));
            ASSERT_EQ(window->width(), width);
            ASSERT_EQ(window->widths.back(), width);
            ASSERT_EQ(heard(), gesture(id, {id}));
            unopened->getSize(&told);
            ASSERT_EQ(told.getWidth(), width);
        }
    controller.setCurrentPreset(19);
    EXPECT_EQ(window->width(), 894) << "a preset opens the strips that it uses";
    set(kQB11, 0.49);
    EXPECT_EQ(window->width(), 644);
    set(kQB11, 0.5);
    EXPECT_EQ(window->width(), 894);
    EXPECT_EQ(controller.createView("other"), nullptr);
}

// Linked channels, and every way of linking them.
struct LinkedEditor : Editor {
    LinkedEditor()
    {
        showEverything();
        for (const Placed& placed : controls()) {
            if (placed.id % 2 != 0 || placed.id < static_cast<int>(kDriveL)
                || placed.id >= kTagInfo)
                continue;
            if (placed.use == "always")
                switches.push_back(placed.id);
            if (placed.isKnob())
                knobs.push_back(placed.id);
            if (placed.use == "band")
                knobs.push_back(placed.id - 2);
        }
    }
    // 0: by a click, 1: by the host, 2: before the window opens.
    void link(int way)
    {
        if (way == 0)
            return window->click(at(kLink));
        set(kLink, 0.5);
        if (way == 2)
            openWindow();
    }
    // Moves the parameter's control upwards (1) or downwards (-1).
    void turn(int id, int direction, int32_t modifiers = 0, bool byWheel = false)
    {
        if (byWheel || id == kHpfL || id == kHpfR)
            window->screen.wheel(at(id), static_cast<float>(direction), modifiers);
        else
            window->drag(at(id), {0, -20.0 * direction}, modifiers);
    }

    std::vector<int> knobs, switches;  // of the left channel
};

TEST_F(LinkedEditor, KnobsKeepTheirOffsetUntilAControlDragRemovesIt)
{
    ASSERT_EQ(knobs.size(), 15u);
    for (int round = 0; round < 6; ++round) {
        const int way = round / 2, side = round % 2, direction = round % 4 < 2 ? -1 : 1;
        // Neighbouring knobs have different offsets.
        const auto distanceOf = [&](std::size_t knob) {
            return -direction * (2 + static_cast<int>(knob % 3)) / 11.0;
        };
        set(kLink, 0);
        for (std::size_t knob = 0; knob < knobs.size(); ++knob) {
            const double turned = (direction < 0 ? 5 : 6) / 11.0;
            set(knobs[knob] + side, turned);
            set(knobs[knob] + 1 - side, turned - distanceOf(knob));
        }
        link(way);
        for (std::size_t knob = 0; knob < knobs.size(); ++knob) {
            const int left = knobs[knob];
            const double distance = distanceOf(knob);
            SCOPED_TRACE(testing::Message() << "parameter " << left + side << ", round " << round);
            bool limited = false;
            for (int step = 0; step < 10; ++step) {
                const double before = value(left + side);
                turn(left + side, step < 5 ? direction : -direction);
                const double partner = value(left + 1 - side);
                EXPECT_NEAR(partner, std::clamp(value(left + side) - distance, 0.0, 1.0), 1e-6);
                EXPECT_TRUE(step > 0 || value(left + side) != before) << "the knob did not move";
                limited |= partner == (direction < 0 ? 0.0 : 1.0);
            }
            EXPECT_TRUE(limited) << "the partner never reached its limit";
        }
        for (std::size_t knob = 0; knob < knobs.size(); ++knob) {
            const int left = knobs[knob];
            SCOPED_TRACE(testing::Message() << "Control, parameter " << left + side);
            turn(left + side, direction);
            EXPECT_NEAR(value(left + side) - value(left + 1 - side), distanceOf(knob), 1e-6);
            turn(left + side, direction, kControl, side);
            EXPECT_EQ(value(left + side), value(left + 1 - side));
            turn(left + 1 - side, -direction);
            EXPECT_EQ(value(left + side), value(left + 1 - side)) << "the offset came back";
        }
    }
}

TEST_F(LinkedEditor, SwitchesThatDifferBecomeEqual)
{
    ASSERT_EQ(switches.size(), 10u);
    for (const int way : {0, 1, 2}) {
        set(kLink, 0);
        link(way);
        for (const int left : switches)
            for (const int moved : {left, left + 1})
                for (const auto& [ofMoved, ofPartner] :
                     {std::pair(0.0, 0.0), {1.0, 1.0}, {0.0, 1.0}, {1.0, 0.0}}) {
                    SCOPED_TRACE(testing::Message()
                                 << "parameter " << moved << ": " << ofMoved << ", " << ofPartner);
                    const int partner = moved ^ 1;
                    set(moved, ofMoved);
                    set(partner, ofPartner);
                    window->click(at(moved));
                    EXPECT_EQ(value(moved), 1 - ofMoved);
                    EXPECT_EQ(value(partner), 1 - ofMoved);
                }
        expectShown();
    }
    heard();
    for (const ParamID id : {kPower, kBpsCh1, kBpsCh2, kMS}) {
        window->click(at(static_cast<int>(id)));
        EXPECT_EQ(heard(), gesture(id, {id})) << "a parameter of both channels";
        set(kPower, 1);
        heard();
    }
}

TEST_F(Editor, WhatAnotherThreadSetsIsShownEvenInTheMiddleOfALayout)
{
    controller.afterRead = [this, first = true](ParamID id) mutable {
        if (id == 0 && std::exchange(first, false))
            std::thread([this] { set(kQB11, 0); }).join();
    };
    set(kQB11, 1);
    EXPECT_EQ(window->width(), 394);
    clock.advance(100);
    EXPECT_EQ(window->width(), 394);
    std::thread([this] { set(kMS, 1); }).join();
    clock.advance(100);
    expectShown();
}

TEST_F(Editor, AHoveredControlIsHighlightedOrShowsItsHint)
{
    const auto rest = [this](CPoint where) {
        window->screen.setPointer(where);
        clock.advance(100);
    };
    const auto hintOf = [this](const Row& target) {
        return target.at(value(target.whole("tag")) > 0 ? "on" : "off");
    };
    for (const Row& row : rows("layout")) {
        show(row);
        for (const Row& target : rows("hover")) {
            const CRect rect = control(target.whole("tag")).rect;
            for (const CPoint& where :
                 {rect.getTopLeft(), CPoint(rect.right - 1, rect.bottom - 1),
                  CPoint(rect.right, rect.top), CPoint(rect.left, rect.bottom)}) {
                SCOPED_TRACE(testing::Message() << row.at("name") << ", tag " << target.at("tag")
                                                << ", at " << where.x << ", " << where.y);
                Look look;
                for (const Row& first : rows("hover")) {
                    const Placed placed = control(first.whole("tag"));
                    if (!placed.rect.pointInside(where))
                        continue;
                    const bool right = where.x >= placed.rect.getCenter().x;
                    if (first.at("off").empty())
                        look.frames[placed.id] = placed.use == "rocker" && right ? 2 : 1;
                    else
                        look.hint = hintOf(first);
                    break;
                }
                if (rect.pointInside(where))
                    rest({200, 300});
                rest(where);
                expectShown(look);
            }
        }
    }
    // The hint follows the parameter without a mouse move.
    for (const Row& target : rows("hover"))
        for (const double on : {0.0, 1.0, 0.0}) {
            if (target.at("off") == target.at("on"))
                continue;
            set(target.whole("tag"), on);
            rest(at(target.whole("tag")));
            Look look;
            look.hint = hintOf(target);
            expectShown(look);
        }
}

// Hosts that keep wheel and keys for themselves hand them over by calls.
TEST_F(Editor, TheHostsWheelAndKeysGoToThePointedControlAndTheOpenTextBox)
{
    constexpr int16 kCommandKey = 4;
    window->screen.setPointer(at(kLGainL));
    EXPECT_EQ(window->view->onWheel(1.0f), kResultTrue);
    EXPECT_GT(value(kLGainL), 0.5);
    EXPECT_EQ(window->view->onKeyDown(0, VKEY_TAB, 0), kResultFalse);
    window->click(at(kNameTag));
    EXPECT_EQ(window->view->onKeyDown(0, VKEY_TAB, kCommandKey), kResultFalse);
    EXPECT_NE(window->screen.textBoxText(), nullptr);
    EXPECT_EQ(window->view->onKeyDown(0, VKEY_TAB, 0), kResultTrue);
    EXPECT_EQ(window->screen.textBoxText(), nullptr);
}

TEST_F(Editor, LitBypassButtonsPulseInPhase)
{
    clock.advance(500);
    expectShown();
    set(kBpsCh1, 1);
    for (int round = 0; round < 3; ++round) {
        for (const Row& tick : rows("pulse")) {
            SCOPED_TRACE(tick.at("light"));
            clock.advance(100);
            Look look;
            look.light = static_cast<float>(tick.number("light"));
            expectShown(look);
        }
        set(kBpsCh2, round % 2);
        set(kBpsCh1, round < 1);
    }
    clock.advance(300);
    set(kPower, 0);
    clock.advance(100);
    expectShown();
    // The pulse begins anew.
    set(kPower, 1);
    clock.advance(100);
    Look look;
    look.light = 0.86f;
    expectShown(look);
}

TEST_F(Editor, InfoPanelCoversEveryLayoutAndClosesAtAClickOrANewSize)
{
    Look look;
    bool first = true;  // the first latency is shown without a report
    const auto toggle = [&] {
        window->click(at(kTagInfo));
        window->screen.mouseMove({200, 300});
    };
    for (const Row& row : rows("layout")) {
        show(row);
        for (const CPoint& corner : {CPoint(0, 0), CPoint(window->width() - 1, 504)}) {
            toggle();
            for (const Row& line : rows("info"))
                if (line.at("milliseconds") != "-") {
                    look.latency = line.at("text");
                    if (!first)
                        set(kLatency, line.number("milliseconds") / 1000);
                    first = false;
                    expectShown(look);
                }
            window->click(corner);
            window->screen.mouseMove({200, 300});
            expectShown();
        }
        EXPECT_EQ(heard(), Calls{}) << "the info panel caused calls to the host";
        toggle();
        set(kQB11, 1 - row.number("QB11"));
        expectShown();
        toggle();
        expectShown(look);
        window->click({200, 200});
        window->screen.mouseMove({200, 300});
        heard();
    }
}

// At every point of the widest layout.
TEST_F(Editor, TheInfoPanelTakesAllMouseInput)
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
    const CPoint info = at(kTagInfo);
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

    // A double or triple click only closes it.
    for (const Placed& placed : controls()) {
        SCOPED_TRACE(placed.title);
        if (placed.id == kTagInfo)
            continue;
        const CPoint place = placed.rect.getCenter();
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

}  // namespace
