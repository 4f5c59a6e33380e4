// Draws every control in every state on one sheet, on the pictures behind them as in the editor,
// and writes it as a PNG. Fails when a picture is missing, when states that must look different
// look the same, or when states that must look the same don't.
//
//   contact_sheet FILE.png
#include "CAnimCoaxT46CustomKnob.h"
#include "CAnimDriveKnob.h"
#include "CAnimFreqKnob.h"
#include "CBlinkLEDButton.h"
#include "CPowerLED.h"
#include "CPoweredResizeButton.h"
#include "CPoweredVerticalSwitch.h"
#include "CSaveLoadButton.h"
#include "CZKKickButton2.h"
#include "CZKRRockerSwitch.h"
#include "CZKRTextEdit.h"
#include "EditorBitmaps.h"

#include "vstgui/platform/offscreen.h"
#include "vstgui/vstgui.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

using namespace VSTGUI;

namespace {

constexpr CCoord kWidth = 1380, kColumn = 456;  // short rows stand in three columns
constexpr CCoord kMargin = 12, kCaptionHeight = 14, kTitleHeight = 22, kGap = 10;
constexpr int32_t kEqualiser = 10000, kPreamplifier = 10009, kPanel = 10022, kFrame = 10007;

int failures = 0;

SharedPointer<CBitmap> bitmap(int32_t number)
{
    const auto picture = owned(new CBitmap(CResourceDescription(number)));
    if (!picture->isLoaded()) {
        std::fprintf(stderr, "bitmap %d is missing\n", static_cast<int>(number));
        ++failures;
    }
    return picture;
}

template <class Control>
struct State {
    std::string caption;
    int look;  // states of a row that look the same have the same number
    std::function<void(Control&)> set;
};

struct Cell {
    std::string name;
    int row;
    int look;
    CRect where;
};

class Sheet {
public:
    // One control in its place on a background, once for each state.
    template <class Control>
    void row(const std::string& title, int32_t background, const CRect& place,
             const std::function<Control*(const CRect& rect)>& make,
             const std::vector<State<Control>>& states)
    {
        ++rows;
        const CCoord step = std::max(place.getWidth(), 78.) + kGap;
        const bool isLong = static_cast<CCoord>(states.size()) * step > kColumn;
        if (column == 3 || isLong)
            startLine();
        const CCoord left = kMargin + column * kColumn;
        label(title, CRect(left, top, kWidth, top + kTitleHeight), kNormalFontBig, kLeftText);
        CCoord x = left, y = top + kTitleHeight;
        for (const auto& state : states) {
            if (x + step > kWidth) {
                x = left;
                y += place.getHeight() + kCaptionHeight + kGap;
            }
            const CRect where(CPoint(x, y), place.getSize());
            auto* const ground = new CViewContainer(where);
            ground->setBackground(bitmap(background));
            ground->setBackgroundOffset(place.getTopLeft());
            Control* const control = make(CRect(CPoint(0, 0), place.getSize()));
            ground->addView(control);
            state.set(*control);
            views.push_back(ground);
            label(state.caption, CRect(x, where.bottom, x + step, where.bottom + kCaptionHeight),
                  kNormalFontVerySmall, kLeftText);
            cells.push_back({title + ", " + state.caption, rows, state.look, where});
            x += step;
        }
        bottom = std::max(bottom, y + place.getHeight() + kCaptionHeight + kGap);
        column = isLong ? 3 : column + 1;
    }

    void write(const std::string& path)
    {
        OffscreenHost host;
        auto* const frame = new CFrame(CRect(0, 0, kWidth, bottom), nullptr);
        frame->setBackgroundColor(CColor(58, 60, 64));
        for (CView* view : views)
            frame->addView(view);
        frame->open(host.parentWindow());
        if (editing)
            editing->takeFocus();
        frame->invalid();
        const Pixels picture = host.paint();
        compare(picture);
        if (!writePng(path, picture)) {
            std::fprintf(stderr, "%s cannot be written\n", path.c_str());
            ++failures;
        }
        std::printf("%d controls in %d rows, %d by %d pixels: %s\n", static_cast<int>(cells.size()),
                    rows, picture.width, picture.height, path.c_str());
        frame->close();
    }

    CTextEdit* editing{nullptr};  // whose box is to be open

private:
    void startLine()
    {
        top = bottom;
        column = 0;
    }

    void label(const std::string& text, const CRect& rect, CFontRef font, CHoriTxtAlign align)
    {
        auto* const view = new CTextLabel(rect, text.c_str());
        view->setFont(font);
        view->setBackColor(kTransparentCColor);
        view->setFrameColor(kTransparentCColor);
        view->setFontColor(CColor(222, 222, 218));
        view->setHoriAlign(align);
        views.push_back(view);
    }

    void compare(const Pixels& picture) const
    {
        const auto same = [&](const CRect& a, const CRect& b) {
            for (int32_t j = 0; j < static_cast<int32_t>(a.getHeight()); ++j)
                for (int32_t i = 0; i < static_cast<int32_t>(a.getWidth()); ++i)
                    if (picture.at(static_cast<int32_t>(a.left) + i,
                                   static_cast<int32_t>(a.top) + j)
                        != picture.at(static_cast<int32_t>(b.left) + i,
                                      static_cast<int32_t>(b.top) + j))
                        return false;
            return true;
        };
        for (const Cell& a : cells)
            for (const Cell& b : cells) {
                if (&a >= &b || a.row != b.row || same(a.where, b.where) == (a.look == b.look))
                    continue;
                std::fprintf(stderr, "%s and %s look %s\n", a.name.c_str(), b.name.c_str(),
                             a.look == b.look ? "different" : "the same");
                ++failures;
            }
    }

    std::vector<CView*> views;
    std::vector<Cell> cells;
    int rows{0};
    int column{0};  // of the line, where the next row goes
    CCoord top{kMargin};
    CCoord bottom{kMargin};
};

void addButtons(Sheet& sheet)
{
    sheet.row<CZKROnOffButton>(
        "CZKROnOffButton: power", kPanel, {3, 387, 52, 463},
        [](const CRect& r) { return new CZKROnOffButton(r, nullptr, 0, bitmap(10018)); },
        {{"off", 0, [](auto&) {}}, {"on", 1, [](auto& b) { b.setValue(1); }}});

    const auto states = [](bool threeFrame) {
        const auto set = [](float value, int32_t power) {
            return [=](CPoweredButton& b) {
                b.setValue(value);
                b.setPower(power);
            };
        };
        return std::vector<State<CPoweredButton>>{{"off", 0, set(0, 1)},
                                                  {"on", 1, set(1, 1)},
                                                  {"off, no power", 0, set(0, 0)},
                                                  {"on, no power", threeFrame ? 2 : 0, set(1, 0)}};
    };
    const struct {
        const char* name;
        int32_t number, background;
        CRect place;
        bool threeFrame;
    } buttons[] = {
        {"process", 10003, kEqualiser, {80, 372, 116, 426}, true},
        {"low shelf", 10004, kEqualiser, {9, 372, 46, 426}, true},
        {"high shelf", 10005, kEqualiser, {45, 372, 80, 426}, true},
        {"28 kHz", 10010, kPreamplifier, {20, 345, 62, 379}, true},
        {"phase", 10011, kPreamplifier, {62, 345, 104, 379}, true},
        {"amplifier", 10012, kPreamplifier, {61, 381, 103, 415}, true},
        {"transformer", 10026, kPreamplifier, {21, 381, 61, 415}, true},
        {"link", 10020, kPanel, {5, 12, 49, 48}, false},
    };
    for (const auto& button : buttons)
        sheet.row<CPoweredButton>(
            std::string("CPoweredButton: ") + button.name, button.background, button.place,
            [&](const CRect& r) {
                return new CPoweredButton(r, nullptr, 0, bitmap(button.number), button.threeFrame);
            },
            states(button.threeFrame));
    sheet.row<CPoweredButton>(
        "CPoweredResizeButton: module", kPanel, {5, 86, 49, 122},
        [](const CRect& r) {
            return new CPoweredResizeButton(r, nullptr, 5, bitmap(10020), false);
        },
        states(false));

    const auto blink = [](float value, int32_t power, float level) {
        return [=](CBlinkLEDButton& b) {
            b.setValue(value);
            b.setPower(power);
            b.setBlinkLevel(level);
        };
    };
    sheet.row<CBlinkLEDButton>(
        "CBlinkLEDButton: bypass", kPanel, {5, 286, 49, 308},
        [](const CRect& r) { return new CBlinkLEDButton(r, nullptr, 1, bitmap(10020), false); },
        {{"off", 0, blink(0, 1, 1)},
         {"on, level 1", 1, blink(1, 1, 1)},
         {"level 0.65", 2, blink(1, 1, 0.65f)},
         {"level 0.3", 3, blink(1, 1, 0.3f)},
         {"on, no power", 0, blink(1, 0, 1)}});
}

void addLights(Sheet& sheet)
{
    const auto led = [](float value, int32_t power) {
        return [=](CPowerLED& l) {
            l.setValue(value);
            l.setPower(power);
        };
    };
    sheet.row<CPowerLED>(
        "CPowerLED: process", kEqualiser, {86, 346, 107, 368},
        [](const CRect& r) { return new CPowerLED(r, nullptr, 0, 2, 22, bitmap(10006)); },
        {{"off", 0, led(0, 1)},
         {"on", 1, led(1, 1)},
         {"off, no power", 0, led(0, 0)},
         {"on, no power", 0, led(1, 0)}});

    std::vector<State<CPoweredVerticalSwitch>> positions;
    const char* const names[] = {"middle", "left", "stereo", "right", "side"};
    for (int i = 0; i < 5; ++i)
        positions.push_back({names[i], i, [i](auto& s) {
                                 s.setPower(1);
                                 s.setValue(static_cast<float>(i) / 4.f);
                             }});
    positions.push_back({"no power", 5, [](auto& s) { s.setValue(0.5f); }});
    sheet.row<CPoweredVerticalSwitch>(
        "CPoweredVerticalSwitch: channel", kPanel, {6, 172, 53, 264},
        [](const CRect& r) {
            return new CPoweredVerticalSwitch(r, nullptr, 3, 5, 92, 5, bitmap(10019));
        },
        positions);
}

void addKnobs(Sheet& sheet)
{
    const struct {
        const char* name;
        int32_t labels;
        CCoord top;
    } bands[] = {{"high", 10013, 36}, {"mid", 10014, 138}, {"low", 10015, 240}};
    for (const auto& band : bands) {
        std::vector<State<CAnimCoaxT46CustomKnob>> states;
        for (int step = 0; step < 10; ++step) {
            const float gain = static_cast<float>(step) / 9.f;
            char caption[40];
            std::snprintf(caption, sizeof caption, "step %d, gain %.2f", step,
                          static_cast<double>(gain));
            states.push_back({caption, step, [step, gain](auto& k) {
                                  k.setValue(gain);
                                  k.setValue2(static_cast<float>(step) / 9.f);
                              }});
        }
        sheet.row<CAnimCoaxT46CustomKnob>(
            std::string("CAnimCoaxT46CustomKnob: ") + band.name + " band", kEqualiser,
            {2, band.top, 123, band.top + 101},
            [&](const CRect& r) {
                auto* const knob = new CAnimCoaxT46CustomKnob(
                    r, nullptr, 28, 129, 71, bitmap(10002), {0, 0}, 25, 12, 25, 18);
                knob->setOuterBitmap(bitmap(10001), 24);
                knob->setOverlayBitmap(bitmap(band.labels));
                return knob;
            },
            states);
    }

    std::vector<State<CAnimGainKnob>> levels;
    int look = 0;
    for (const float value : {0.f, 0.1f, 0.25f, 0.4f, 0.5f, 0.6f, 0.75f, 0.9f, 1.f}) {
        char caption[20];
        std::snprintf(caption, sizeof caption, "value %.2f", static_cast<double>(value));
        levels.push_back({caption, look++, [value](auto& k) { k.setValue(value); }});
    }
    sheet.row<CAnimGainKnob>(
        "CAnimGainKnob: output", kPreamplifier, {7, 230, 119, 342},
        [](const CRect& r) {
            return new CAnimGainKnob(r, nullptr, 12, 101, 82, bitmap(10016), {0, 0}, 15);
        },
        levels);
    sheet.row<CAnimGainKnob>(
        "CAnimDriveKnob: drive", kPreamplifier, {7, 29, 119, 141},
        [](const CRect& r) {
            return new CAnimDriveKnob(r, nullptr, 8, 101, 82, bitmap(10016), {0, 0}, 15);
        },
        levels);

    std::vector<State<CAnimFreqKnob>> steps;
    for (int step = 0; step < 12; ++step)
        steps.push_back({"step " + std::to_string(step), step,
                         [step](auto& k) { k.setValue(static_cast<float>(step) / 11.f); }});
    sheet.row<CAnimFreqKnob>(
        "CAnimFreqKnob: high-pass", kPreamplifier, {7, 128, 119, 240},
        [](const CRect& r) {
            auto* const dial = new CAnimFreqKnob(r, nullptr, 10, 12, 82, bitmap(10017), {0, 0}, 15);
            dial->setOverlayBitmap(bitmap(10021));
            return dial;
        },
        steps);
}

void enter(CView& view, CCoord x = 1)
{
    CPoint where(x, 1);
    view.onMouseEntered(where, 0);
}

void hold(CView& view, int32_t buttons = kLButton)
{
    CPoint where(1, 1);
    view.onMouseDown(where, buttons);
}

void addMomentaryControls(Sheet& sheet)
{
    const auto states = [](int heldLook, int heldOffLook) {
        return std::vector<State<CZKKickButton>>{
            {"at rest", 0, [](auto&) {}},
            {"hovered", 1, [](auto& b) { enter(b); }},
            {"held", heldLook,
             [](auto& b) {
                 enter(b);
                 hold(b, kLButton | kDoubleClick);
             }},
            {"held, mouse off", heldOffLook, [](auto& b) { hold(b, kLButton | kDoubleClick); }}};
    };
    const struct {
        const char* name;
        int32_t number;
        CRect place;
        CCoord frame;
        bool doubleClick;
    } kicks[] = {
        {"manual", 989, {378, 488, 390, 503}, 15, false},
        {"recall slot", 990, {327, 489, 339, 503}, 14, false},
        {"store slot", 991, {304, 489, 316, 503}, 14, false},
        {"default bank", 992, {15, 488, 51, 503}, 15, true},
        {"default preset", 993, {79, 488, 121, 503}, 15, true},
    };
    for (const auto& kick : kicks)
        sheet.row<CZKKickButton>(
            std::string("CZKKickButton: ") + kick.name, kFrame, kick.place,
            [&](const CRect& r) {
                return new CZKKickButton(r, nullptr, 0, kick.frame, bitmap(kick.number),
                                         kick.doubleClick);
            },
            states(2, 2));
    sheet.row<CZKKickButton>(
        "CZKKickButton2: info", kPanel, {5, 462, 51, 481},
        [](const CRect& r) { return new CZKKickButton2(r, nullptr, 60, 19, bitmap(10025)); },
        states(1, 0));

    for (const int32_t number : {990, 991})
        sheet.row<CSaveLoadButton>(
            number == 990 ? "CSaveLoadButton: load" : "CSaveLoadButton: save", kFrame,
            number == 990 ? CRect(53, 489, 65, 503) : CRect(2, 489, 14, 503),
            [&](const CRect& r) { return new CSaveLoadButton(r, nullptr, 0, 14, bitmap(number)); },
            {{"at rest", 0, [](auto&) {}},
             {"hovered", 1, [](auto& b) { enter(b); }},
             {"at work, left", 2, [](auto& b) { b.setValue(1); }},
             {"at work, right", 2, [](auto& b) { b.setValue(0.5f); }}});

    sheet.row<CZKRRockerSwitch>(
        "CZKRRockerSwitch: presets", kFrame, {271, 489, 302, 503},
        [](const CRect& r) { return new CZKRRockerSwitch(r, nullptr, 1001, 14, bitmap(995)); },
        {{"at rest", 0, [](auto&) {}},
         {"left hovered", 1, [](auto& r) { enter(r); }},
         {"right hovered", 2, [](auto& r) { enter(r, 30); }},
         {"wheel, back", 3, [](auto& r) { r.setValue(-1); }},
         {"forward", 4, [](auto& r) { r.setValue(1); }}});
}

void addNameFields(Sheet& sheet)
{
    const auto text = [](const char* name) { return [=](CZKRTextEdit& f) { f.setText(name); }; };
    sheet.row<CZKRTextEdit>("CZKRTextEdit: preset name", kFrame, {139, 488, 255, 503},
                            [](const CRect& r) {
                                auto* const field =
                                    new CZKRTextEdit(r, nullptr, 1000, "", bitmap(kFrame));
                                const auto font = owned(new CFontDesc("Arial", 11));
                                field->setBackOffset({139, 488});
                                field->setFont(font);
                                field->setFontColor(CColor(0x24, 0x24, 0x20));
                                field->setBackColor(CColor(0xD1, 0xE3, 0xEE));
                                return field;
                            },
                            {{"empty", 0, text("")},
                             {"a name", 1, text("Default")},
                             {"24 characters", 2, text("Grüße an die Männer fünf")},
                             {"with a shadow", 3,
                              [](auto& f) {
                                  f.setText("Default");
                                  f.setTextColor(CColor(0x80, 0x10, 0x10));
                                  f.setTextShadowColor(kWhiteCColor);
                              }},
                             {"being edited", 0, [&](auto& f) {
                                  f.setText("Default");
                                  sheet.editing = &f;
                              }}});
}

}  // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        std::fprintf(stderr, "usage: contact_sheet FILE.png\n");
        return 2;
    }
    registerEditorBitmaps();
    Sheet sheet;
    addButtons(sheet);
    addLights(sheet);
    addKnobs(sheet);
    addMomentaryControls(sheet);
    addNameFields(sheet);
    sheet.write(arguments[1]);
    return failures == 0 ? 0 : 1;
}
