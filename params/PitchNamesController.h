// PitchNamesController: the controller half of the plug-in. It owns the parameters, the presets and
// the list of open editors, and provides the state that a host's project stores.
#pragma once

#include "params/AttachedEditor.h"
#include "presets/ZKRPresetSystemController3.h"

#include <vector>

namespace Steinberg {
namespace Vst {

class PitchNamesController : public ZKRPresetSystemController3, public IEditorUpdates {
public:
    // Creates the editor view of a controller, with one reference for the caller.
    using ViewFactory = IPlugView* (*)(ZKRPresetSystemController3& controller);

    // Without `makeView` there is no editor.
    explicit PitchNamesController(platform::SettingsStore& store = platform::userSettings(),
                                  ViewFactory makeView = nullptr);

    // Creates the unit, the parameters and the presets.
    tresult PLUGIN_API initialize(FUnknown* context) override;
    tresult PLUGIN_API terminate() override;

    // The state is the whole bank, little-endian. A state that is shorter than the buffer is read
    // together with what the buffer held before.
    tresult PLUGIN_API setState(IBStream* state) override;
    tresult PLUGIN_API getState(IBStream* state) override;

    // Also notifies every open editor, for any id: changes of the presets have ids from 1000 up
    // (PresetTags.h). Editors that are held or that run on another thread are notified later.
    tresult PLUGIN_API setParamNormalized(ParamID id, ParamValue value) override;

    // A new view for "editor"; null for any other name.
    IPlugView* PLUGIN_API createView(FIDString name) override;
    void editorAttached(EditorView* view) override;
    void editorRemoved(EditorView* view) override;

    // IEditorUpdates
    void PLUGIN_API holdEditors() override;
    void PLUGIN_API releaseEditors() override;

    // Every bus belongs to the root unit.
    tresult PLUGIN_API getUnitByBus(MediaType type, BusDirection dir, int32 busIndex, int32 channel,
                                    UnitID& unitId) override;

    void fillFactoryBank() override;

    DEFINE_INTERFACES
    DEF_INTERFACE(IEditorUpdates)
    END_DEFINE_INTERFACES(ZKRPresetSystemController3)
    DELEGATE_REFCOUNT(ZKRPresetSystemController3)

private:
    // The attached editors for which the condition holds.
    template <typename Condition>
    std::vector<AttachedEditor*> editorsWhere(Condition condition);
    bool isAttached(AttachedEditor* editor);

    ViewFactory makeView;
    std::mutex stateMutex;    // of stateBuffer
    std::mutex editorsMutex;  // of the two below; not held while an editor is notified
    std::vector<AttachedEditor*> editors;
    int holds = 0;  // calls of holdEditors without their releaseEditors
};

}  // namespace Vst
}  // namespace Steinberg
