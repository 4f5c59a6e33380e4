// Vst3Editor: the editor for VST 3 hosts, whose calls it checks.
#pragma once

#include "editor/TemplateEditor.h"

namespace Steinberg {
namespace Vst {

class Vst3Editor : public TemplateEditor {
public:
    static IPlugView* create(ZKRPresetSystemController3& controller);
    // Closes a window that the host has left open.
    ~Vst3Editor() override;

    // kResultFalse for a second window, for a null window, and on Linux for a host without an event
    // loop for it (IPlugFrame without Linux::IRunLoop), where it would never be redrawn: such hosts
    // then show controls of their own.
    tresult PLUGIN_API attached(void* parent, FIDString type) override;
    // kResultFalse without a window.
    tresult PLUGIN_API removed() override;

private:
    using TemplateEditor::TemplateEditor;
};

}  // namespace Vst
}  // namespace Steinberg
