// PitchNamesController: the controller half of the plug-in, which owns the parameters, the presets
// and the list of open editors, and with them everything that a host's project keeps.
#pragma once

#include "AttachedEditor.h"
#include "ZKRPresetSystemController3.h"

#include <vector>

namespace Steinberg {
namespace Vst {

class PitchNamesController : public ZKRPresetSystemController3 {
public:
    // Makes the editor view of a controller, with one reference for the caller.
    using ViewFactory = IPlugView* (*)(ZKRPresetSystemController3& controller);

    // Without a factory there is no editor.
    explicit PitchNamesController(platform::SettingsStore& store = platform::userSettings(),
                                  ViewFactory viewFactory = nullptr);

    // Builds the unit, the table of parameters and the presets.
    tresult PLUGIN_API initialize(FUnknown* context) SMTG_OVERRIDE;
    tresult PLUGIN_API terminate() SMTG_OVERRIDE;

    // The state is the whole bank. It is written in the machine's byte order and never swapped; of
    // a shorter one than the buffer holds, the rest is what the buffer held before.
    tresult PLUGIN_API setState(IBStream* state) SMTG_OVERRIDE;
    tresult PLUGIN_API getState(IBStream* state) SMTG_OVERRIDE;

    // Also tells every open editor, whatever the id: editors and presets talk through ids of 1000
    // and above.
    tresult PLUGIN_API setParamNormalized(ParamID id, ParamValue value) SMTG_OVERRIDE;

    // A new view for "editor"; null for any other name.
    IPlugView* PLUGIN_API createView(FIDString name) SMTG_OVERRIDE;
    void editorAttached(EditorView* editor) SMTG_OVERRIDE;
    void editorRemoved(EditorView* editor) SMTG_OVERRIDE;

    // Every bus belongs to the root unit.
    tresult PLUGIN_API getUnitByBus(MediaType type, BusDirection dir, int32 busIndex, int32 channel,
                                    UnitID& unitId) SMTG_OVERRIDE;

    void fillFactoryBank() SMTG_OVERRIDE;

private:
    ViewFactory makeView;
    std::vector<AttachedEditor*> editors;
};

}  // namespace Vst
}  // namespace Steinberg
