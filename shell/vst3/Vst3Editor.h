// Vst3Editor: the editor for hosts of VST 3.
#pragma once

#include "editor/TemplateEditor.h"

namespace Steinberg {
namespace Vst {

class Vst3Editor : public TemplateEditor {
public:
    static IPlugView* create(ZKRPresetSystemController3& controller);
    // Ends what a host has left open.
    ~Vst3Editor() override;

    // Refuses another window while it has one, a null window, and on Linux a host that turns no
    // event loop for it (IPlugFrame without Linux::IRunLoop), where nothing would ever move: such
    // hosts show controls of their own.
    tresult PLUGIN_API attached(void* parent, FIDString type) override;
    // kResultFalse without a window.
    tresult PLUGIN_API removed() override;

private:
    using TemplateEditor::TemplateEditor;
};

}  // namespace Vst
}  // namespace Steinberg
