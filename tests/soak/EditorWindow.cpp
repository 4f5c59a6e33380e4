// What windows have in common.
#include "EditorWindow.h"

#include "HostError.h"

EditorWindow::EditorWindow(host::NativePlugin& owner) : plugin(owner)
{
    AEffect* const effect = plugin.effect();
    ERect* rect = nullptr;
    effect->dispatcher(effect, effEditGetRect, 0, 0, &rect, 0.0f);
    if (!rect || rect->right <= rect->left || rect->bottom <= rect->top)
        throw host::HostError("the plug-in has no editor");
    currentWidth = rect->right - rect->left;
    open(currentWidth, rect->bottom - rect->top);
    if (!window)
        throw host::HostError("there is no display to open editors on");
    if (effect->dispatcher(effect, effEditOpen, 0, 0, window, 0.0f) == 0) {
        close();
        throw host::HostError("the editor does not open");
    }
}

EditorWindow::~EditorWindow()
{
    plugin.dispatch(effEditClose);
    close();
}

void EditorWindow::follow()
{
    const host::HostReports reports = plugin.reports();
    if (reports.windowSizes == 0)
        return;
    currentWidth = reports.windowWidth;
    resize(reports.windowWidth, reports.windowHeight);
}
