// What windows have in common.
#include "EditorWindow.h"

#include "HostError.h"

EditorSize editorSize(host::NativePlugin& plugin)
{
    AEffect* const effect = plugin.effect();
    ERect* rect = nullptr;
    effect->dispatcher(effect, effEditGetRect, 0, 0, &rect, 0.0f);
    if (!rect || rect->right <= rect->left || rect->bottom <= rect->top)
        throw host::HostError("the plug-in has no editor");
    return {rect->right - rect->left, rect->bottom - rect->top};
}
