// VSTGUIEditor: an editor view that contains a VSTGUI frame.
#pragma once

#include "base/source/sharedobject.h"
#include "public.sdk/source/vst/vsteditcontroller.h"

#include "vstgui/vstgui.h"

#include <atomic>
#include <memory>
#include <thread>

namespace Steinberg {
namespace Vst {

class VSTGUIEditor : public SharedObject<EditorView>,
                     public VSTGUI::VSTGUIEditorInterface,
                     public VSTGUI::CBaseObject {
public:
    // `controller` is an EditController, which the editor keeps alive. `size` is what hosts see
    // before the editor is opened.
    explicit VSTGUIEditor(void* controller, ViewRect* size = nullptr);
    ~VSTGUIEditor() override;

    // For the subclass: open() creates the frame and opens it in the host's window with
    // `frameConfig` as its configuration; close() destroys it.
    virtual bool PLUGIN_API open(void* parent, const VSTGUI::PlatformType& type) = 0;
    virtual void PLUGIN_API close() = 0;

    // The period of the timer messages that `notify` gets while the editor is attached; initially
    // 100 ms.
    void setIdleRate(int32 milliseconds);

    // The smallest and the largest size that requestResize accepts. False, and nothing stored, if
    // min exceeds max. A frame outside these limits requests the nearest size inside.
    bool setEditorSizeConstrains(const VSTGUI::CPoint& min, const VSTGUI::CPoint& max);
    // Asks the host for a window of that size. False outside the limits, without a host, and if
    // the host refuses.
    bool requestResize(const VSTGUI::CPoint& size);

    // Whether the caller is the thread of the window and the timer. True on any thread before the
    // view is attached.
    bool isOnOwnThread() const;

    // IPlugView. removed() on another thread than the view's returns at once: the view makes no
    // more calls to the host, and closes its window at its next timer tick.
    tresult PLUGIN_API setFrame(IPlugFrame* newFrame) override;
    tresult PLUGIN_API isPlatformTypeSupported(FIDString type) override;
    tresult PLUGIN_API attached(void* parent, FIDString type) override;
    tresult PLUGIN_API removed() override;
    tresult PLUGIN_API onSize(ViewRect* newSize) override;
    tresult PLUGIN_API onKeyDown(char16 key, int16 keyMsg, int16 modifiers) override;
    tresult PLUGIN_API onKeyUp(char16 key, int16 keyMsg, int16 modifiers) override;
    tresult PLUGIN_API onWheel(float distance) override;

    // VSTGUIEditorInterface
    void beginEdit(int32_t index) override;
    void endEdit(int32_t index) override;
    int32_t getKnobMode() const override;

    // CBaseObject. References are counted by the view.
    VSTGUI::CMessageResult notify(VSTGUI::CBaseObject* sender,
                                  VSTGUI::IdStringPtr message) override;
    void remember() override { addRef(); }
    void forget() override { release(); }
    int32_t getNbReference() const override { return references(); }

protected:
    // The event loop for the frame; null if the system's is used.
    VSTGUI::IPlatformFrameConfig* frameConfig() const { return config.get(); }

private:
    void tick();
    void closeWindow();

    std::unique_ptr<VSTGUI::IPlatformFrameConfig> config;
    std::atomic<std::thread::id> ownThread{std::thread::id()};  // none while not attached
    std::atomic<bool> hostGone{false};                          // plugFrame must not be used
    std::atomic<bool> removalPostponed{false};
    VSTGUI::CVSTGUITimer* timer;
    VSTGUI::CPoint minSize{0, 0}, maxSize{32767, 32767};
};

}  // namespace Vst
}  // namespace Steinberg
