// Every control in every layout, compared with controls.txt: class and place, what it shows, and
// its response to mouse and wheel.
#include "tests/editor/EditorStage.h"

#include <algorithm>
#include <set>
#include <sstream>
#include <typeinfo>

using namespace VSTGUI;

namespace {

std::string text(const CRect& rect)
{
    std::ostringstream words;
    words << rect.left << " " << rect.top << " " << rect.right << " " << rect.bottom;
    return words.str();
}

bool isExactly(const CControl* control, const std::string& className)
{
    const std::string mangled = std::to_string(className.size()) + className;
    return std::string(typeid(*control).name()).find(mangled) != std::string::npos;
}

// The topmost control at a point; null for none.
CControl* underMouse(CFrame* frame, CPoint where)
{
    std::vector<SharedPointer<CView>> chain;
    frame->collectViewsAt(where, chain);
    return chain.empty() ? nullptr : dynamic_cast<CControl*>(&*chain.back());
}

TEST_F(Editor, EveryControlHasTheClassAndPlaceOfItsRow)
{
    for (const Row& row : rows("layout")) {
        show(row);
        EXPECT_EQ(window->width(), row.whole("width"));
        const std::vector<Placed> all = controls();
        std::set<std::pair<const Placed*, CControl*>> met;
        for (int y = 0; y < 505; ++y)
            for (int x = 0; x < window->width(); ++x) {
                const Placed* top = nullptr;
                for (const Placed& placed : all)
                    if (placed.rect.pointInside(CPoint(x, y)))
                        top = &placed;
                met.insert({top, underMouse(window->frame(), CPoint(x, y))});
            }
        for (const Placed& placed : all)
            EXPECT_TRUE(placed.rect.left >= window->width()
                        || std::any_of(met.begin(), met.end(),
                                       [&](const auto& pair) { return pair.first == &placed; }))
                << placed.title << " is covered everywhere";
        for (const auto& [placed, control] : met) {
            SCOPED_TRACE(row.at("name") + ", " + (placed ? placed->title : "outside all rows"));
            if (!placed || !control) {
                EXPECT_EQ(placed, nullptr) << "no control at a point of its rectangle";
                EXPECT_EQ(control, nullptr) << "there is a control of tag " << control->getTag();
                continue;
            }
            EXPECT_TRUE(isExactly(control, placed->className)) << placed->className;
            if (!placed->isDisplay()) {
                EXPECT_EQ(control->getTag(), placed->id);
            }
            CPoint corner = control->getViewSize().getTopLeft();
            control->localToFrame(corner);
            EXPECT_EQ(text({corner, control->getViewSize().getSize()}), text(placed->rect));
            const CBitmap* const picture = control->getBackground();
            EXPECT_EQ(picture ? picture->getResourceDescription().u.id : 0, placed->picture);
            EXPECT_EQ(control->wantsFocus(), placed->use == "text") << "the keyboard";
        }
    }
}

TEST_F(Editor, EveryControlShowsItsParameterAndThePower)
{
    for (const Row& row : rows("layout")) {
        SCOPED_TRACE(row.at("name"));
        show(row);
        for (int round = 0; round < 12; ++round) {
            SCOPED_TRACE(round);
            set(kPower, round % 4 != 3);
            int place = round;
            for (const Placed& placed : controls()) {
                ++place;
                const auto laws = rows("law", placed.use);
                if (!laws.empty()) {
                    const double x =
                        laws[static_cast<std::size_t>(place / 2) % laws.size()].number("value");
                    set(placed.id, place % 2 ? x : 1 - x);
                }
                if (placed.use == "band")
                    set(placed.id - 2, place % 10 / 9.0);
                else if (placed.use == "dial")
                    set(placed.id, place % 12 / 11.0);
                else if (placed.use == "switch")
                    set(placed.id, place % 5 / 4.0);
                else if (placed.use == "always" || placed.use == "wheel")
                    if (placed.id != kPower)
                        set(placed.id, (place * 5 + round) / 2 % 2);
            }
            expectShown();
        }
    }
    set(kPower, 1);
    set(kLFreqL, 40);
    set(kHpfL, -3);
    expectShown();
}

struct KnobRows : Editor {
    void turn(const Placed& knob, CPoint from, const std::string& moves)
    {
        bool pressed = false;
        std::istringstream words(moves);
        for (std::string move; words >> move;) {
            const int32_t shift = move.back() == 's' ? kShift : 0;
            const double number = std::strtod(move.c_str() + !isMove(move), nullptr);
            if (pressed && !isMove(move)) {
                window->screen.mouseUp(from);
                pressed = false;
            }
            if (move[0] == 'w')
                window->screen.wheel(from, static_cast<float>(number), shift);
            else if (move[0] == 'c')
                window->click(from, kLButton | kControl);
            else if (move[0] == 'l')
                window->click(label(knob, static_cast<std::size_t>(number)));
            else if (move[0] == 'h')
                set(knob.use == "band" ? knob.id - 2 : knob.id, number);
            else {
                if (!pressed)
                    window->screen.mouseDown(from, kLButton | shift);
                pressed = true;
                const CPoint by(number, -std::stod(move.substr(move.find(',') + 1)));
                window->screen.mouseMove(from + by, kLButton | shift);
            }
        }
        if (pressed)
            window->screen.mouseUp(from);
    }
    static bool isMove(const std::string& move) { return move.find(',') != std::string::npos; }
    static CPoint label(const Placed& knob, std::size_t step)
    {
        return knob.rect.getTopLeft() + rows("label", knob.use)[step].rect().getCenter();
    }
};

TEST_F(KnobRows, TurnEveryKnob)
{
    showEverything();
    for (const Placed& knob : controls())
        for (const Row& row : rows("turn", knob.use)) {
            SCOPED_TRACE(testing::Message() << knob.title << " at " << row.at("x") << ", "
                                            << row.at("y") << " by " << row.at("by"));
            const bool band = knob.use == "band";
            const CPoint centre = knob.face().getCenter();
            set(knob.id, 0.9);
            window->doubleClick(centre);
            EXPECT_NEAR(value(knob.id), knob.use == "dial" ? 0.0 : 0.5, 1e-5) << "its default";
            const int ring = knob.id - 2;
            if (band) {
                set(ring, 0.5);
                window->doubleClick(centre + CPoint(28, 0));
                EXPECT_EQ(value(ring), 0.0) << "the ring's default";
            }
            const double gain = value(knob.id);
            heard();
            turn(knob, centre + CPoint(row.number("x"), row.number("y")), row.at("by"));
            const int moved = row.at("turns") == "gain" ? knob.id : ring;
            EXPECT_NEAR(value(moved), row.number("to"), 2e-5);
            if (moved != knob.id) {
                EXPECT_EQ(value(knob.id), gain);
            } else if (band) {
                EXPECT_EQ(value(ring), 0.0);
            }
            for (const auto& [id, reported] : controller.host.edits) {
                EXPECT_EQ(static_cast<int>(id), moved);
                EXPECT_TRUE(reported >= 0.0 && reported <= 1.0) << reported;
            }
            const Calls calls = heard();
            EXPECT_EQ(calls.front(), "begin " + std::to_string(knob.id));
            EXPECT_EQ(calls.back(), "end " + std::to_string(knob.id));
        }
}

TEST_F(Editor, EachMoveOfADragIsReportedTwiceInOneGesture)
{
    set(kLink, 0);
    window->screen.mouseDown(at(kLGainL));
    window->screen.mouseMove(at(kLGainL) - CPoint(0, 10), kLButton);
    window->screen.mouseUp(at(kLGainL));
    window->screen.mouseMove(at(kLGainL) - CPoint(0, 20));
    EXPECT_EQ(
        controller.host.calls,
        (Calls{"begin 28", "perform 28", "perform 28", "perform 28", "perform 28", "end 28"}));
    ASSERT_EQ(controller.host.edits.size(), 4u);
    EXPECT_NEAR(controller.host.edits[2].second, 0.5, 1e-4) << "first the old value";
    EXPECT_NEAR(controller.host.edits[3].second, 0.55, 1e-3);

    // A double click reports the parameter that the previous gesture moved.
    window->click(at(kLFreqL));
    heard();
    window->screen.mouseDown(at(kLGainL), kLButton | kDoubleClick);
    EXPECT_EQ(heard(), gesture(kLGainL, {kLFreqL}));
}

TEST_F(Editor, EveryLabelSetsItsStepInOneGesture)
{
    showEverything();
    for (const Placed& knob : controls()) {
        const auto labels = rows("label", knob.use);
        const auto id = static_cast<ParamID>(knob.use == "band" ? knob.id - 2 : knob.id);
        const double last = static_cast<double>(labels.size()) - 1;
        for (std::size_t step = 0; step < labels.size(); ++step) {
            const CRect rect = labels[step].rect();
            for (const CPoint& corner :
                 {rect.getTopLeft(), CPoint(rect.right - 1, rect.bottom - 1),
                  CPoint(rect.left - 1, rect.top), CPoint(rect.right - 1, rect.bottom)}) {
                const CPoint point = knob.rect.getTopLeft() + corner;
                SCOPED_TRACE(testing::Message() << knob.title << ", step " << step << " at "
                                                << corner.x << ", " << corner.y);
                if (!knob.rect.pointInside(point))
                    continue;
                const std::size_t before = step == 4 ? 5 : 4;
                std::size_t hit = before;
                for (std::size_t other = 0; other < labels.size(); ++other)
                    if (labels[other].rect().pointInside(corner))
                        hit = other;
                set(static_cast<int>(id), static_cast<double>(before) / last);
                heard();
                window->click(point);
                EXPECT_NEAR(value(static_cast<int>(id)), static_cast<double>(hit) / last, 1e-6);
                EXPECT_TRUE(hit == before
                            || heard() == gesture(static_cast<ParamID>(knob.id), {id}));
            }
        }
        if (labels.empty())
            continue;
        // "off" leads back to the step that the host had set, also while the mouse rested.
        const CPoint off = knob.rect.getTopLeft() + labels[0].rect().getCenter();
        window->screen.mouseMove(off);
        set(static_cast<int>(id), 3 / last);
        for (const double expected : {0.0, 3 / last}) {
            window->screen.mouseDown(off, kLButton);
            window->screen.mouseUp(off, kLButton);
            EXPECT_NEAR(value(static_cast<int>(id)), expected, 1e-6) << knob.title;
        }
    }
}

TEST_F(Editor, BothBypassesTheChannelsUnlessBothAreBypassed)
{
    for (const auto& [left, right] : {std::pair(0, 0), {1, 0}, {0, 1}, {1, 1}}) {
        SCOPED_TRACE(testing::Message() << left << ", " << right);
        set(kBpsCh1, left);
        set(kBpsCh2, right);
        window->click(at(kTagBothBypass));
        EXPECT_EQ(value(kBpsCh1), left && right ? 0.0 : 1.0);
        EXPECT_EQ(value(kBpsCh2), value(kBpsCh1));
    }
}

TEST_F(Editor, EveryButtonTogglesItsParameterAndIsDisabledAsItsRowSays)
{
    const std::set<std::string> kinds{"wheel", "always", "key", "label", "both"};
    for (const Row& row : rows("layout")) {
        show(row);
        set(kLink, 0);
        for (const Placed& button : controls())
            for (const double power : {1.0, 0.0}) {
                SCOPED_TRACE(testing::Message()
                             << row.at("name") << ", " << button.title << ", power " << power);
                if (!kinds.count(button.use))
                    continue;
                const bool both = button.use == "both", label = button.use == "label";
                const auto tag = static_cast<ParamID>(button.id);
                const int id = both ? static_cast<int>(kBpsCh1) : button.id;
                const int other = both ? static_cast<int>(kBpsCh2) : id;
                const CPoint middle = label ? button.rect.getCenter() : at(button.id);
                set(kPower, power);
                const double before = value(id);
                const auto expectTurned = [&](bool turned) {
                    EXPECT_EQ(value(id), turned ? 1.0 - before : before);
                    EXPECT_EQ(value(other), value(id));
                    EXPECT_EQ(heard(),
                              !turned    ? Calls{}
                                  : both ? Calls({"perform 1", "perform 2"})
                                         : gesture(tag, {tag}));
                    for (const int changed : {id, other})
                        set(changed, before);
                    heard();
                };
                const bool open = power > 0 || button.use == "always" || label;
                heard();
                window->click(middle, kRButton);
                expectTurned(false);
                window->click(middle);
                expectTurned(open);
                for (const float distance : {0.1f, -0.1f, 0.11f}) {
                    window->screen.paint();
                    window->screen.wheel(middle, distance);
                    expectTurned(open && distance > 0.1f && button.use != "key" && !label);
                }
            }
    }
}

}  // namespace
