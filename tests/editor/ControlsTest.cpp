// Every control in every layout, held against controls.txt: what it is and where, what it shows,
// and what mouse and wheel make of it.
#include "EditorStage.h"

#include "CAnimCoaxT46CustomKnob.h"
#include "CAnimGainKnob.h"

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

// In the window.
CRect placeOf(const CControl* control, CRect rect)
{
    CPoint corner = rect.getTopLeft();
    control->localToFrame(corner);
    return {corner, rect.getSize()};
}

bool isExactly(const CControl* control, const std::string& className)
{
    const std::string mangled = std::to_string(className.size()) + className;
    return std::string(typeid(*control).name()).find(mangled) != std::string::npos;
}

void collect(CViewContainer* container, std::vector<CControl*>& found)
{
    for (uint32_t i = 0; i < container->getNbViews(); ++i) {
        CView* const view = container->getView(i);
        if (auto* const control = dynamic_cast<CControl*>(view))
            found.push_back(control);
        else if (auto* const inner = dynamic_cast<CViewContainer*>(view))
            collect(inner, found);
    }
}

bool answers(const Placed& row, CControl* control)
{
    return isExactly(control, row.className)
        && (!row.isDisplay() ? control->getTag() == row.id
                             : text(placeOf(control, control->getViewSize())) == text(row.rect));
}

// The control at each point of a window that its mouse events go to; null for none.
CControl* underMouse(CFrame* frame, CPoint where)
{
    std::vector<SharedPointer<CView>> chain;
    frame->collectViewsAt(where, chain);
    return chain.empty() ? nullptr : dynamic_cast<CControl*>(&*chain.back());
}

TEST_F(Editor, EveryControlIsWhatItsRowSaysAndStandsThere)
{
    for (const Row& row : rows("layout")) {
        SCOPED_TRACE(row.at("name"));
        show(row);
        EXPECT_EQ(window->width(), row.whole("width"));
        std::vector<CControl*> found;
        collect(window->frame(), found);
        const std::vector<Placed> all = controls();
        std::vector<CControl*> ofRow;
        for (const Placed& placed : all) {
            SCOPED_TRACE(placed.title);
            const auto it = std::find_if(found.begin(), found.end(), [&](CControl* control) {
                return answers(placed, control);
            });
            ofRow.push_back(it == found.end() ? nullptr : *it);
            if (it == found.end()) {
                ADD_FAILURE() << "no " << placed.className << " is there";
                continue;
            }
            CControl* const control = *it;
            EXPECT_EQ(text(placeOf(control, control->getViewSize())), text(placed.rect));
            EXPECT_EQ(text(placeOf(control, control->getMouseableArea())), text(placed.rect))
                << "the mouse's area";
            const CBitmap* const picture = control->getBackground();
            EXPECT_EQ(picture ? picture->getResourceDescription().u.id : 0, placed.picture);
            EXPECT_EQ(control->wantsFocus(), placed.use == "text") << "the keyboard";
            found.erase(it);
        }
        for (const CControl* control : found)
            ADD_FAILURE() << "without a row: tag " << control->getTag() << " at "
                          << text(placeOf(control, control->getViewSize()));
        std::set<std::string> covered;
        for (int y = 0; y < 505; ++y)
            for (int x = 0; x < window->width(); ++x) {
                std::size_t top = all.size();
                for (std::size_t i = 0; i < all.size(); ++i)
                    if (all[i].rect.pointInside(CPoint(x, y)))
                        top = i;
                if (underMouse(window->frame(), CPoint(x, y))
                    != (top < all.size() ? ofRow[top] : nullptr))
                    covered.insert(top < all.size() ? all[top].title : "nothing");
            }
        for (const std::string& title : covered)
            ADD_FAILURE() << "the mouse finds another control in the place of " << title;
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

TEST_F(Editor, LawsAgreeWithTheirFormulas)
{
    showEverything();
    std::vector<CControl*> found;
    collect(window->frame(), found);
    for (CControl* const control : found) {
        const auto check = [&](const auto* knob, const char* kind) {
            if (!knob)
                return;
            SCOPED_TRACE(knob->getTag());
            for (const Row& row : rows("law", kind)) {
                const auto x = static_cast<float>(row.number("value"));
                EXPECT_NEAR(knob->positionFromValue(x), row.number("position"), 5e-5) << x;
                EXPECT_NEAR(knob->valueFromPosition(x), row.number("back"), 5e-5) << x;
                EXPECT_NEAR(knob->positionFromValue(1 - x), 1 - row.number("position"), 5e-5) << x;
                EXPECT_NEAR(knob->valueFromPosition(1 - x), 1 - row.number("back"), 5e-5) << x;
            }
        };
        check(dynamic_cast<CAnimCoaxT46CustomKnob*>(control), "band");
        check(dynamic_cast<CAnimGainKnob*>(control), "level");
    }
}

// "3,20", "w-1", either with "s" behind it.
void turn(Window& window, CPoint from, const std::string& moves)
{
    bool pressed = false;
    std::istringstream words(moves);
    for (std::string move; words >> move;) {
        const int32_t shift = move.back() == 's' ? kShift : 0;
        if (move[0] == 'w') {
            window.screen.wheel(from, std::stof(move.substr(1)), shift);
            continue;
        }
        if (!pressed)
            window.screen.mouseDown(from, kLButton | shift);
        pressed = true;
        const CPoint to(std::stod(move), -std::stod(move.substr(move.find(',') + 1)));
        window.screen.mouseMove(from + to, kLButton | shift);
    }
    if (pressed)
        window.screen.mouseUp(from);
}

TEST_F(Editor, EveryKnobTurnsByItsRows)
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
            turn(*window, centre + CPoint(row.number("x"), row.number("y")), row.at("by"));
            const int moved = row.at("turns") == "gain" ? knob.id : ring;
            EXPECT_NEAR(value(moved), row.number("to"), 2e-5);
            if (moved != knob.id) {
                EXPECT_EQ(value(knob.id), gain);
            } else if (band) {
                EXPECT_EQ(value(ring), 0.0);
            }
            for (const auto& edit : controller.host.edits)
                EXPECT_EQ(static_cast<int>(edit.first), moved);
            const Calls calls = heard();
            EXPECT_EQ(calls.front(), "begin " + std::to_string(knob.id));
            EXPECT_EQ(calls.back(), "end " + std::to_string(knob.id));
        }
}

TEST_F(Editor, EveryLabelSetsItsStepInOneGesture)
{
    showEverything();
    for (const Placed& knob : controls()) {
        const auto labels = rows("label", knob.use);
        const int id = knob.use == "band" ? knob.id - 2 : knob.id;
        const double last = static_cast<double>(labels.size()) - 1;
        for (std::size_t step = 0; step < labels.size(); ++step) {
            const CRect rect = labels[step].rect();
            for (const CPoint& corner :
                 {rect.getTopLeft(), CPoint(rect.right - 1, rect.bottom - 1),
                  CPoint(rect.left - 1, rect.top), CPoint(rect.left, rect.top - 1),
                  CPoint(rect.right, rect.bottom - 1), CPoint(rect.right - 1, rect.bottom)}) {
                const CPoint point = knob.rect.getTopLeft() + corner;
                if (!knob.rect.pointInside(point))
                    continue;
                SCOPED_TRACE(testing::Message() << knob.title << ", step " << step << " at "
                                                << corner.x << ", " << corner.y);
                std::size_t before = step == 4 ? 5 : 4, hit = before;
                for (std::size_t other = 0; other < labels.size(); ++other)
                    if (labels[other].rect().pointInside(corner))
                        hit = other;
                set(id, static_cast<double>(before) / last);
                heard();
                window->click(point);
                EXPECT_NEAR(value(id), static_cast<double>(hit) / last, 1e-6);
                const auto tag = static_cast<ParamID>(knob.id);
                if (hit == step && hit != before) {
                    EXPECT_EQ(heard(), gesture(tag, {static_cast<ParamID>(id)}));
                }
            }
        }
    }
}

TEST_F(Editor, EveryButtonTurnsItsParameterOverAndIsLockedAsItsRowSays)
{
    for (const Row& row : rows("layout"))
        for (const double power : {1.0, 0.0}) {
            show(row);
            set(kLink, 0);
            for (const Placed& button : controls()) {
                SCOPED_TRACE(testing::Message()
                             << row.at("name") << ", " << button.title << ", power " << power);
                const std::set<std::string> kinds{"wheel", "always", "key", "label", "both"};
                if (!kinds.count(button.use))
                    continue;
                set(kPower, power);
                const bool both = button.use == "both";
                const auto tag = static_cast<ParamID>(button.id);
                const int id = both ? static_cast<int>(kBpsCh1) : button.id;
                const int other = both ? static_cast<int>(kBpsCh2) : id;
                const CPoint middle =
                    button.use == "label" ? button.rect.getCenter() : at(button.id);
                const double before = value(id);
                const auto expectTurned = [&](bool turned) {
                    EXPECT_EQ(value(id), turned ? 1.0 - before : before);
                    EXPECT_EQ(value(other), value(id));
                    EXPECT_EQ(heard(),
                              !turned    ? Calls{}
                                  : both ? Calls({"perform 1", "perform 2"})
                                         : gesture(tag, {tag}));
                };
                const bool open = power > 0 || button.use == "always" || button.use == "label";
                heard();
                window->screen.mouseDown(middle, kRButton);
                window->screen.mouseUp(middle, kRButton);
                expectTurned(false);
                window->click(middle);
                expectTurned(open);
                for (const int changed : {id, other})
                    set(changed, before);
                set(kPower, button.id == kPower ? before : power);
                for (const float distance : {0.1f, -0.1f, 0.11f}) {
                    window->screen.paint();
                    heard();
                    window->screen.wheel(middle, distance);
                    expectTurned(open && distance > 0.1f && button.use != "key"
                                 && button.use != "label");
                }
                for (const int changed : {id, other})
                    set(changed, before);
            }
        }
}

}  // namespace
