// The editor of a controller in a host that has no display: the mouse goes where a user would
// move it, and what the host hears and the pictures show is held against controls.txt.
#pragma once

#include "../presets/ControllerProbe.h"
#include "TemplateEditor.h"

#include "vstgui/platform/offscreen/manualclock.h"
#include "vstgui/platform/offscreen/offscreenhost.h"

#include <functional>
#include <map>
#include <memory>

using VSTGUI::CPoint;
using VSTGUI::CRect;
using Calls = std::vector<std::string>;

// What a host hears of a control that is used once.
Calls gesture(ParamID tag, std::initializer_list<ParamID> edited);

// The window of a host, which takes every size that the editor asks for.
class Window : public IPlugFrame {
public:
    explicit Window(ControllerProbe& controller);
    ~Window() { close(); }

    void close();
    tresult PLUGIN_API resizeView(IPlugView* resized, ViewRect* size) override
    {
        widths.push_back(size->getWidth());
        return resized->onSize(size);
    }
    tresult PLUGIN_API queryInterface(const TUID, void** obj) override
    {
        *obj = nullptr;
        return kNoInterface;
    }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }

    int width() const { return static_cast<int>(screen.frameSize().x); }
    VSTGUI::CFrame* frame() { return view->getFrame(); }
    // A point of the column at the right end.
    CPoint panel(double x, double y) const { return {width() - 89 + x, y}; }

    void click(CPoint where, int32_t buttons = VSTGUI::kLButton)
    {
        screen.mouseMove(where);
        screen.mouseDown(where, buttons);
        screen.mouseUp(where, buttons);
    }
    void doubleClick(CPoint where, int32_t modifiers = 0)
    {
        click(where, VSTGUI::kLButton | modifiers);
        click(where, VSTGUI::kLButton | VSTGUI::kDoubleClick | modifiers);
    }
    void drag(CPoint from, CPoint by, int32_t modifiers = 0);

    VSTGUI::OffscreenHost screen;
    IPtr<TemplateEditor> view;
    std::vector<int> widths;  // that the editor asked for
};

// A row of controls.txt: words by the names of their columns.
struct Row : std::map<std::string, std::string> {
    double number(const std::string& column) const { return std::stod(at(column)); }
    int whole(const std::string& column) const { return std::stoi(at(column)); }
    CRect rect() const
    {
        return {number("left"), number("top"), number("right"), number("bottom")};
    }
};

const std::vector<Row>& rows(const std::string& table);
// Those for a kind of knob.
std::vector<Row> rows(const std::string& table, const std::string& knob);

// A control in the window, and what messages call it.
struct Placed {
    std::string name, className, use, title;
    CRect rect;
    int id, picture, frames, lit;

    // Where a knob's picture stands in its rectangle.
    CRect face() const;
    bool isKnob() const { return use == "band" || use == "level" || use == "dial"; }
    // The others have a tag of their own.
    bool isDisplay() const { return use == "lamp" || use == "hint"; }
};

// What a window shows beside the parameters.
struct Look {
    // Of momentary buttons that are not at rest, by tag.
    std::map<int, int> frames{};
    // Of a lit bypass.
    float light = 1.0f;
    std::string hint = "www.zkr-soundworks.example";
    // In its field, if not the selected preset's.
    std::string name{};
    // Empty while the info panel is not shown.
    std::string latency{};
};

struct Editor : testing::Test {
    Editor() { openWindow(); }
    // The window goes ahead of the controller.
    ~Editor() override { window.reset(); }

    void openWindow() { window = std::make_unique<Window>(controller); }

    double value(int id) { return controller.getParamNormalized(static_cast<ParamID>(id)); }
    void set(int id, double value)
    {
        controller.setParamNormalized(static_cast<ParamID>(id), value);
    }
    // What the host heard since the last question, without repeats.
    Calls heard();
    // All strips in a window of 894 pixels, unlinked.
    void showEverything();
    void show(const Row& layout);

    // Of the layout that is asked for, the later ones on top.
    std::vector<Placed> controls();
    Placed control(int tag);
    // The middle of the control that edits the parameter, or of the ring on its right-hand side.
    CPoint at(int id);
    // The text that stands there.
    std::string hint();

    // What the window should look like.
    VSTGUI::Pixels expectedPicture(const Look& look = {});
    // Says what else shows.
    void expectShown(const Look& look = {});

    VSTGUI::ManualClock clock;
    platform::MemoryStore store;
    ControllerProbe controller{store, TemplateEditor::create};
    std::unique_ptr<Window> window;

private:
    const Row& layout();
    int frameOf(const Placed& placed, const Look& look);
    void draw(VSTGUI::CDrawContext& context, const Placed& placed, const Look& look);
    void drawKnob(VSTGUI::CDrawContext& context, const Placed& knob);
};
