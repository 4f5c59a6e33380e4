#include "editor/StripEditor.h"

#include "editor/EditorBitmap.h"

using namespace VSTGUI;

namespace {
const CPoint kStripSize(125, 448);
}

StripEditor::StripEditor(IControlListener* listener) : listener(listener) { }

bool StripEditor::attach(CFrame* parent, const CPoint& origin)
{
    return attachContainer(parent, origin, kStripSize, 0);
}

bool StripEditor::attachContainer(CFrame* parent, const CPoint& origin, const CPoint& size,
                                  int32_t background)
{
    if (attached || !parent)
        return false;
    container = new CViewContainer(CRect(origin, size));
    container->setBackgroundColor(kGreyCColor);
    if (background)
        container->setBackground(editorBitmap(background));
    parent->addView(container);
    frame = parent;
    attached = true;
    return true;
}

void StripEditor::detach()
{
    if (!attached)
        return;
    attached = false;
    frame->removeView(container);
    container = nullptr;
    frame = nullptr;
}

void StripEditor::setParameter(int32_t /*id*/, double /*value*/) { }

void StripEditor::setPower(int32_t /*state*/) { }
