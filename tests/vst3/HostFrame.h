// A VST 3 host's side of an open view: its window and, on Linux, its event loop.
#pragma once

#include "Host.h"
#include "User.h"

#include "pluginterfaces/gui/iplugview.h"

#include <memory>

namespace vst3 {

class HostFrame : public IPlugFrame {
public:
    // The view's left upper corner will be there; the window gets its size.
    HostFrame(IPlugView* view, Place corner);
    // Removes what is attached.
    ~HostFrame() { remove(); }

    // What the view answers.
    tresult attach();
    void remove();
    // Lets go of the view without removing it first, as hosts do that are in a hurry.
    void forget();
    // Turns the loop until it holds; false after half a minute.
    static bool soon(const std::function<bool()>& condition);
    Place at(Place inside) const { return {corner.x + inside.x, corner.y + inside.y}; }
    VSTGUI::Pixels picture() const { return screenshot(corner, size.getWidth(), size.getHeight()); }

    tresult PLUGIN_API resizeView(IPlugView* asking, ViewRect* size) SMTG_OVERRIDE;
    tresult PLUGIN_API queryInterface(const TUID iid, void** object) SMTG_OVERRIDE;
    uint32 PLUGIN_API addRef() SMTG_OVERRIDE { return 1; }
    uint32 PLUGIN_API release() SMTG_OVERRIDE { return 1; }

    IPtr<IPlugView> view;
    const Place corner;
    ViewRect size;
    std::unique_ptr<HostWindow> window;
    bool offersLoop = true;

private:
    const std::thread::id ownThread = std::this_thread::get_id();
    bool attached = false;
};

// The system's part, in HostLoopLinux.cpp and HostLoopWindows.cpp.
FIDString windowType();
FUnknown* eventLoop();        // what a frame offers beside itself; null on Windows
std::size_t registrations();  // timers and descriptors that views have left with the loop
void turnLoop();

}  // namespace vst3
