#include "editor/ZKRFrame.h"

using namespace VSTGUI;

void ZKRFrame::setMouseView(CView* view)
{
    // A drag under way would never get its release.
    CFrame::onMouseCancel();
    mouseView = view;
}

CMouseEventResult ZKRFrame::onMouseDown(CPoint& where, const CButtonState& buttons)
{
    return mouseView ? mouseView->onMouseDown(where, buttons) : CFrame::onMouseDown(where, buttons);
}

CMouseEventResult ZKRFrame::onMouseUp(CPoint& where, const CButtonState& buttons)
{
    return mouseView ? mouseView->onMouseUp(where, buttons) : CFrame::onMouseUp(where, buttons);
}

CMouseEventResult ZKRFrame::onMouseMoved(CPoint& where, const CButtonState& buttons)
{
    return mouseView ? mouseView->onMouseMoved(where, buttons)
                     : CFrame::onMouseMoved(where, buttons);
}

CMouseEventResult ZKRFrame::onMouseCancel()
{
    if (!mouseView)
        return CFrame::onMouseCancel();
    // As in a container: a view that does not implement the cancel gets the release.
    CPoint where;
    if (mouseView->onMouseCancel() == kMouseEventNotImplemented && getCurrentMouseLocation(where))
        mouseView->onMouseUp(where, getCurrentMouseButtons());
    return kMouseEventHandled;
}

CMouseEventResult ZKRFrame::onMouseEntered(CPoint& where, const CButtonState& buttons)
{
    return mouseView ? mouseView->onMouseEntered(where, buttons)
                     : CFrame::onMouseEntered(where, buttons);
}

CMouseEventResult ZKRFrame::onMouseExited(CPoint& where, const CButtonState& buttons)
{
    return mouseView ? mouseView->onMouseExited(where, buttons)
                     : CFrame::onMouseExited(where, buttons);
}

bool ZKRFrame::onWheel(const CPoint& where, const CMouseWheelAxis& axis, const float& distance,
                       const CButtonState& buttons)
{
    return mouseView ? mouseView->onWheel(where, axis, distance, buttons)
                     : CFrame::onWheel(where, axis, distance, buttons);
}
