// A fixture for the editor in an offscreen host, under synthetic mouse input. Expected pictures are
// drawn from controls.txt.
#pragma once

#include "editor/TemplateEditor.h"
#include "tests/presets/ControllerProbe.h"
#include "tests/support/HostObject.h"

#include "vstgui/platform/offscreen/manualclock.h"
#include "vstgui/platform/offscreen/offscreenhost.h"

#include <functional>
#include <map>
#include <memory>
#include <utility>

using VSTGUI::CPoint;
using VSTGUI::CRect;
using Calls = std::vector<std::string>;

// The calls that a host gets in one gesture.
Calls gesture(ParamID tag, std::initializer_list<ParamID> edited);

// A host's window with the editor, which accepts every size that the editor requests.
class Window final : public HostObject<IPlugFrame> {
public:
    explicit Window(ControllerProbe& controller, bool closesWhenResized = false);
    ~Window() { close(); }

    void close();
    tresult PLUGIN_API resizeView(IPlugView* resized, ViewRect* size) override
    {
        widths.push_back(size->getWidth());
        if (std::exchange(closesWhenResized, false)) {
            close();
            return kResultFalse;
        }
        return resized->onSize(size);
    }

    int width() const { return static_cast<int>(screen.frameSize().x); }
    VSTGUI::CFrame* frame() { return view->getFrame(); }
    // A point relative to the main panel, the column at the right.
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
    std::vector<int> widths;  // requested by the editor
    bool closesWhenResized;   // at the next request, with no reference to the editor left
};

// A row of controls.txt: values by column name.
struct Row : std::map<std::string, std::string> {
    double number(const std::string& column) const { return std::stod(at(column)); }
    int whole(const std::string& column) const { return std::stoi(at(column)); }
    CRect rect() const
    {
        return {number("left"), number("top"), number("right"), number("bottom")};
    }
};

const std::vector<Row>& rows(const std::string& table);
// Only the rows for one kind of knob.
std::vector<Row> rows(const std::string& table, const std::string& knob);

// A control in the window; `title` is its name in messages.
struct Placed {
    std::string name, className, use, title;
    CRect rect;
    int id, picture, frames, lit;

    // The rectangle of a knob's picture.
    CRect face() const;
    bool isKnob() const { return use == "band" || use == "level" || use == "dial"; }
    // Displays have no tag of their own.
    bool isDisplay() const { return use == "lamp" || use == "hint"; }
};

// Expected contents of a window that do not follow from the parameters.
struct Look {
    // Frames of momentary buttons that are not at rest, by tag.
    std::map<int, int> frames{};
    // Brightness of a lit bypass button.
    float light = 1.0f;
    std::string hint = "www.zkr-soundworks.example";
    // Text of the name field; empty: the selected preset's name.
    std::string name{};
    // Latency line of the info panel; empty: the panel is closed.
    std::string latency{};
};

struct Editor : testing::Test {
    Editor() { openWindow(); }
    // The window must be destroyed before the controller.
    ~Editor() override { window.reset(); }

    void openWindow() { window = std::make_unique<Window>(controller); }

    double value(int id) { return controller.getParamNormalized(static_cast<ParamID>(id)); }
    void set(int id, double value)
    {
        controller.setParamNormalized(static_cast<ParamID>(id), value);
    }
    // The host's calls since the previous call of heard(), without repeats.
    Calls heard();
    // Shows all strips (894 pixels wide) and unlinks the channels.
    void showEverything();
    void show(const Row& layout);

    // The controls of the current layout, topmost last.
    std::vector<Placed> controls();
    Placed control(int tag);
    // The centre of the control that edits the parameter; for a ring, a point on its right side.
    CPoint at(int id);

    // The picture drawn from controls.txt.
    VSTGUI::Pixels expectedPicture(const Look& look = {});
    // Compares the window with it and names the controls that differ.
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
