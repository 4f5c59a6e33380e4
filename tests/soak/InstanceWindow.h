// A window with an instance's editor, and synthetic mouse input: events are sent directly to the
// editor's child window, whatever else is on the screen.
#pragma once

#include "tests/support/HostWindow.h"
#include "tools/host/HostError.h"
#include "tools/host/NativePlugin.h"

class InstanceWindow {
public:
    // Throws HostError without a display, or if the editor does not open.
    explicit InstanceWindow(host::NativePlugin& owner)
        : plugin(owner), rect(rectOf(owner)), window({0, 0}, rect.right, rect.bottom)
    {
        AEffect* const effect = plugin.effect();
        if (effect->dispatcher(effect, effEditOpen, 0, 0, window.handle(), 0.0f) == 0)
            throw host::HostError("the editor does not open");
    }
    ~InstanceWindow() { plugin.dispatch(effEditClose); }
    InstanceWindow(const InstanceWindow&) = delete;
    InstanceWindow& operator=(const InstanceWindow&) = delete;

    // Takes the size that the plug-in has requested, if any.
    void follow()
    {
        const host::HostReports reports = plugin.reports();
        if (reports.windowSizes == 0)
            return;
        rect.right = static_cast<VstInt16>(reports.windowWidth);
        window.resize(reports.windowWidth, reports.windowHeight);
    }
    int width() const { return rect.right; }

    enum class Act { Move, Press, Release, WheelUp, WheelDown };
    // x and y are relative to the editor.
    void send(Act act, int x, int y);

private:
    static ERect rectOf(host::NativePlugin& plugin)
    {
        ERect* rect = nullptr;
        plugin.effect()->dispatcher(plugin.effect(), effEditGetRect, 0, 0, &rect, 0.0f);
        if (!rect || rect->right <= 0 || rect->bottom <= 0)
            throw host::HostError("the plug-in has no editor");
        return *rect;
    }

    host::NativePlugin& plugin;
    ERect rect;
    HostWindow window;
    bool held = false;  // the left button is down
};
