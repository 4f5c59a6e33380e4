// A VST 3 host's side of an open view: its window and, on Linux, its event loop.
#pragma once

#include "tests/support/User.h"
#include "tests/vst3/Host.h"

#include "pluginterfaces/gui/iplugview.h"

#include <memory>

namespace vst3 {

// The system's event loop as a host offers it to views.
struct EventLoop {
    FIDString windowType;
    FUnknown* offered;                                // the run loop, null on Windows
    std::function<int(bool ofTimers)> registrations;  // of timers, or of descriptors
    void (*turn)();
    void (*turnTimers)();  // leaves descriptors out, on Linux
};
extern const EventLoop eventLoop;

class HostFrame : public HostObject<IPlugFrame> {
public:
    // Opens a window of the view's size at plugView's future upper left corner.
    HostFrame(IPlugView* plugView, Place place) : view(plugView), corner(place)
    {
        EXPECT_EQ(view->getSize(&size), kResultTrue);
        window = std::make_unique<HostWindow>(corner, size.getWidth(), size.getHeight());
    }
    // Removes the view if it is attached.
    ~HostFrame() { remove(); }

    // Returns the view's answer.
    tresult attach()
    {
        view->setFrame(this);
        const tresult result = view->attached(window->handle(), eventLoop.windowType);
        attached = attached || result == kResultTrue;
        return result;
    }
    void remove()
    {
        if (std::exchange(attached, false)) {
            view->setFrame(nullptr);
            EXPECT_EQ(view->removed(), kResultTrue);
        }
    }
    // Releases the view without removing it first, as some hosts do.
    void forget()
    {
        attached = false;
        view = nullptr;
    }
    // Runs the loop until the condition holds; false after half a minute.
    static bool soon(const std::function<bool()>& condition)
    {
        return turnUntil(condition, eventLoop.turn);
    }
    Place at(Place inside) const { return {corner.x + inside.x, corner.y + inside.y}; }
    VSTGUI::Pixels picture() const { return screenshot(corner, size.getWidth(), size.getHeight()); }

    tresult PLUGIN_API resizeView(IPlugView* asking, ViewRect* wanted) override
    {
        EXPECT_EQ(asking, view.get());
        if (attached) {
            EXPECT_EQ(std::this_thread::get_id(), ownThread);
        }
        size = *wanted;
        window->resize(size.getWidth(), size.getHeight());
        return view->onSize(wanted);
    }
    tresult PLUGIN_API queryInterface(const TUID _iid, void** obj) override
    {
        if (HostObject::queryInterface(_iid, obj) == kResultOk)
            return kResultOk;
        FUnknown* const loop = offersLoop ? eventLoop.offered : nullptr;
        return loop ? loop->queryInterface(_iid, obj) : kNoInterface;
    }

    IPtr<IPlugView> view;
    const Place corner;
    ViewRect size;
    std::unique_ptr<HostWindow> window;
    bool offersLoop = true;

private:
    const std::thread::id ownThread = std::this_thread::get_id();
    bool attached = false;
};

}  // namespace vst3
