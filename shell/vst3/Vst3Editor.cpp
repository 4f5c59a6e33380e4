#include "shell/vst3/Vst3Editor.h"

#include "public.sdk/source/vst/vstguiplatform.h"

namespace Steinberg {
namespace Vst {

IPlugView* Vst3Editor::create(ZKRPresetSystemController3& controller)
{
    return new Vst3Editor(&controller);
}

Vst3Editor::~Vst3Editor()
{
    plugFrame = nullptr;
    if (frame)
        TemplateEditor::removed();
}

tresult PLUGIN_API Vst3Editor::attached(void* parent, FIDString type)
{
    if (frame || !parent || isPlatformTypeSupported(type) != kResultTrue
        || !hasEventLoop(plugFrame))
        return kResultFalse;
    const IPtr<Vst3Editor> alive(this);
    const tresult result = TemplateEditor::attached(parent, type);
    if (frame)
        return result;
    TemplateEditor::removed();
    return kResultFalse;
}

tresult PLUGIN_API Vst3Editor::removed()
{
    return frame ? TemplateEditor::removed() : kResultFalse;
}

}  // namespace Vst
}  // namespace Steinberg
