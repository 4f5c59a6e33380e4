// PitchNamesController: the controller half of the plug-in, which owns the parameters, the presets
// and the list of open editors, and with them everything that a host's project keeps.
#pragma once

#include "params/AttachedEditor.h"
#include "presets/ZKRPresetSystemController3.h"

#include <vector>

namespace Steinberg {
namespace Vst {

class PitchNamesController : public ZKRPresetSystemController3, public IEditorUpdates {
public:
    // Makes the editor view of a controller, with one reference for the caller.
    using ViewFactory = IPlugView* (*)(ZKRPresetSystemController3& controller);

    // Without a factory there is no editor.
    explicit PitchNamesController(platform::SettingsStore& store = platform::userSettings(),
                                  ViewFactory viewFactory = nullptr);

    // Builds the unit, the table of parameters and the presets.
    tresult PLUGIN_API initialize(FUnknown* context) override;
    tresult PLUGIN_API terminate() override;

    // The state is the whole bank. It is written in the machine's byte order and never swapped; of
    // a shorter one than the buffer holds, the rest is what the buffer held before.
    tresult PLUGIN_API setState(IBStream* state) override;
    tresult PLUGIN_API getState(IBStream* state) override;

    // Also tells every open editor, whatever the id: editors and presets talk through ids of 1000
    // and above. An editor that is held, or lives on another thread, hears of it later.
    tresult PLUGIN_API setParamNormalized(ParamID id, ParamValue value) override;

    // A new view for "editor"; null for any other name.
    IPlugView* PLUGIN_API createView(FIDString name) override;
    void editorAttached(EditorView* editor) override;
    void editorRemoved(EditorView* editor) override;

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
    std::mutex editorsMutex;  // of the two below; never held while an editor is told
    std::vector<AttachedEditor*> editors;
    int holds = 0;
};

}  // namespace Vst
}  // namespace Steinberg
