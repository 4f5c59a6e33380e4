// HostedEditor: the editor as hosts of VST 3 meet it directly.
#pragma once

#include "TemplateEditor.h"

namespace Steinberg {
namespace Vst {

class HostedEditor : public TemplateEditor {
public:
    static IPlugView* create(ZKRPresetSystemController3& controller);
    // Ends what a host has left open.
    ~HostedEditor() override;

    // Refuses another window while it has one, a null window, and on Linux a host that turns no
    // event loop for it (IPlugFrame without Linux::IRunLoop), where nothing would ever move: such
    // hosts show controls of their own.
    tresult PLUGIN_API attached(void* parent, FIDString type) SMTG_OVERRIDE;
    // kResultFalse without a window.
    tresult PLUGIN_API removed() SMTG_OVERRIDE;

private:
    using TemplateEditor::TemplateEditor;
};

}  // namespace Vst
}  // namespace Steinberg
