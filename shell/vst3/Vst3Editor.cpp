// HostedEditor: which windows it opens in.
#include "Vst3Editor.h"

#include "public.sdk/source/vst/vstguiplatform.h"

namespace Steinberg {
namespace Vst {

IPlugView* HostedEditor::create(ZKRPresetSystemController3& presetController)
{
    return new HostedEditor(&presetController);
}

HostedEditor::~HostedEditor()
{
    plugFrame = nullptr;
    if (frame)
        TemplateEditor::removed();
}

tresult PLUGIN_API HostedEditor::attached(void* parent, FIDString type)
{
    if (frame || !parent || isPlatformTypeSupported(type) != kResultTrue
        || !hasEventLoop(plugFrame))
        return kResultFalse;
    const tresult result = TemplateEditor::attached(parent, type);
    if (frame)
        return result;
    TemplateEditor::removed();
    return kResultFalse;
}

tresult PLUGIN_API HostedEditor::removed()
{
    return frame ? TemplateEditor::removed() : kResultFalse;
}

}  // namespace Vst
}  // namespace Steinberg
