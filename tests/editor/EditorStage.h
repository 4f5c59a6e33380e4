// The editor of a controller in a host that has no display: the mouse goes where a user would
// move it, and what the host and the pictures show comes out.
#pragma once

#include "../presets/ControllerProbe.h"
#include "EditorBitmaps.h"
#include "TemplateEditor.h"

#include "vstgui/platform/offscreen.h"

#include <memory>

using VSTGUI::CPoint;

// The window of a host, which takes every size that the editor asks for.
class Window : public IPlugFrame {
public:
    explicit Window(ControllerProbe& controller)
        : view(Steinberg::owned(dynamic_cast<TemplateEditor*>(controller.createView("editor"))))
    {
        view->setFrame(this);
        const FIDString type =
            view->isPlatformTypeSupported("HWND") == kResultTrue ? "HWND" : "X11EmbedWindowID";
        view->attached(screen.parentWindow(), type);
    }
    ~Window() { close(); }

    void close()
    {
        if (!view)
            return;
        view->setFrame(nullptr);
        view->removed();
        view = nullptr;
    }

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
    void drag(CPoint from, CPoint by, int32_t modifiers = 0)
    {
        constexpr int kSteps = 4;
        screen.mouseDown(from, VSTGUI::kLButton | modifiers);
        for (int step = 1; step <= kSteps; ++step)
            screen.mouseMove({from.x + by.x * step / kSteps, from.y + by.y * step / kSteps},
                             VSTGUI::kLButton | modifiers);
        screen.mouseUp(from + by, VSTGUI::kLButton | modifiers);
    }
    std::string hint()
    {
        for (uint32_t i = 0; i < frame()->getNbViews(); ++i)
            if (auto* label = dynamic_cast<VSTGUI::CTextLabel*>(frame()->getView(i));
                label && !dynamic_cast<VSTGUI::CTextEdit*>(label))
                return label->getText();
        return "no hint label";
    }

    VSTGUI::OffscreenHost screen;
    IPtr<TemplateEditor> view;
    std::vector<int> widths;  // that the editor asked for
};

struct Editor : testing::Test {
    Editor() { openWindow(); }
    // The window goes ahead of the controller.
    ~Editor() override { window.reset(); }

    void openWindow() { window = std::make_unique<Window>(controller); }

    double value(ParamID id) { return controller.getParamNormalized(id); }
    void set(ParamID id, double value) { controller.setParamNormalized(id, value); }
    // What the host heard since the last question, without repeats.
    std::vector<std::string> heard()
    {
        std::vector<std::string> calls = std::exchange(controller.host.calls, {});
        controller.host.edits.clear();
        calls.erase(std::unique(calls.begin(), calls.end()), calls.end());
        return calls;
    }
    // All strips in a window of 894 pixels, unlinked.
    void showEverything(bool linked = false)
    {
        set(kQB11, 1);
        set(k2x, 1);
        set(kLink, linked);
        heard();
    }

    VSTGUI::ManualClock clock;
    platform::MemoryStore store;
    ControllerProbe controller{store, TemplateEditor::create};
    std::unique_ptr<Window> window;
};
