// Vst2EditorWrapper: shows a controller's view in the window of a VST 2 host.
#pragma once

#include "sdk/vst2/aeffeditor.h"

#include "pluginterfaces/gui/iplugview.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"

#include <functional>

namespace Steinberg {
namespace Vst {

class Vst2EditorWrapper : public ::AEffEditor, public IPlugFrame {
public:
    // Asks the host for a window of that size in pixels; false if the host does not resize it.
    using SizeWindow = std::function<bool(int32 width, int32 height)>;

    Vst2EditorWrapper(IEditController& controller, SizeWindow sizeWindow);
    // Closes an open view.
    ~Vst2EditorWrapper() override;

    // Whether the controller has an editor at all.
    static bool exists(IEditController& controller);

    // AEffEditor
    bool getRect(ERect** target) override;
    bool open(void* parentWindow) override;
    void close() override;
    bool onKeyDown(VstInt32 character, VstInt32 virtualKey, VstInt32 modifiers) override;
    bool onKeyUp(VstInt32 character, VstInt32 virtualKey, VstInt32 modifiers) override;
    bool onWheel(float distance) override;
    bool setKnobMode(VstInt32 mode) override;

    // IPlugFrame: passes the view's request on to the host. If the host does not resize its window,
    // the view is resized all the same.
    tresult PLUGIN_API resizeView(IPlugView* sender, ViewRect* newSize) override;

    // Owned by the effect, so references are not counted.
    tresult PLUGIN_API queryInterface(const TUID _iid, void** obj) override;
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }

private:
    bool createView();

    IEditController& controller;
    SizeWindow sizeWindow;
    IPtr<IPlugView> view;
    bool attached = false;
    ERect rect{};  // as reported to the host
};

}  // namespace Vst
}  // namespace Steinberg
