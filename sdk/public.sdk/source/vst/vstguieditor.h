// VSTGUIEditor: an editor view whose contents are a VSTGUI frame.
#pragma once

#include "public.sdk/source/vst/vsteditcontroller.h"

#include "vstgui/vstgui.h"

#include <atomic>
#include <memory>
#include <thread>

namespace Steinberg {
namespace Vst {

class VSTGUIEditor : public EditorView,
                     public VSTGUI::VSTGUIEditorInterface,
                     public VSTGUI::CBaseObject {
public:
    // `controller` is an EditController, which the editor keeps alive. `size` is what hosts see
    // before the editor is opened.
    explicit VSTGUIEditor(void* controller, ViewRect* size = nullptr);
    ~VSTGUIEditor() override;

    // For the subclass: makes the frame and opens it in the host's window, with `frameConfig` as
    // its configuration; ends it.
    virtual bool PLUGIN_API open(void* parent, const VSTGUI::PlatformType& type) = 0;
    virtual void PLUGIN_API close() = 0;

    // The period of the tick that `notify` brings while the editor is attached; 100 ms to begin
    // with.
    void setIdleRate(int32 milliseconds);

    // The sizes that requestResize may ask for, both included. False, and nothing stored, when min
    // exceeds max. A frame outside of them asks for the nearest size inside.
    bool setEditorSizeConstrains(const VSTGUI::CPoint& min, const VSTGUI::CPoint& max);
    // Asks the host for a window of that size. False outside the constraints, without a host, and
    // when the host refuses.
    bool requestResize(const VSTGUI::CPoint& size);

    // Whether the caller runs on the thread that the window and the timer live on. Before the view
    // is attached, any thread is.
    bool isOnOwnThread() const;

    // IPlugView. A host that takes the view away on another thread than its own is answered at
    // once: the view asks nothing more of the host, and ends its window with its next tick.
    tresult PLUGIN_API setFrame(IPlugFrame* frame) SMTG_OVERRIDE;
    tresult PLUGIN_API isPlatformTypeSupported(FIDString type) SMTG_OVERRIDE;
    tresult PLUGIN_API attached(void* parent, FIDString type) SMTG_OVERRIDE;
    tresult PLUGIN_API removed() SMTG_OVERRIDE;
    tresult PLUGIN_API onSize(ViewRect* newSize) SMTG_OVERRIDE;
    tresult PLUGIN_API onKeyDown(char16 key, int16 keyMsg, int16 modifiers) SMTG_OVERRIDE;
    tresult PLUGIN_API onKeyUp(char16 key, int16 keyMsg, int16 modifiers) SMTG_OVERRIDE;
    tresult PLUGIN_API onWheel(float distance) SMTG_OVERRIDE;

    // VSTGUIEditorInterface
    void beginEdit(int32_t index) override;
    void endEdit(int32_t index) override;
    int32_t getKnobMode() const override;

    // CBaseObject. There is one count, the view's.
    VSTGUI::CMessageResult notify(VSTGUI::CBaseObject* sender,
                                  VSTGUI::IdStringPtr message) override;
    void remember() override { addRef(); }
    void forget() override { release(); }
    int32_t getNbReference() const override;

protected:
    // The event loop that the frame is to live on; null where it needs none to be named.
    VSTGUI::IPlatformFrameConfig* frameConfig() const { return config.get(); }

private:
    void tick();
    void endWindow();

    std::unique_ptr<VSTGUI::IPlatformFrameConfig> config;
    std::atomic<std::thread::id> ownThread{std::thread::id()};  // none while not attached
    std::atomic<bool> hostGone{false};                          // plugFrame is not to be used
    std::atomic<bool> removalPostponed{false};
    VSTGUI::CVSTGUITimer* timer;
    VSTGUI::CPoint minSize{0, 0}, maxSize{32767, 32767};
};

}  // namespace Vst
}  // namespace Steinberg
