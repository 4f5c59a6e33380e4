// ZKRFrame: where its mouse events go.
#include "ZKRFrame.h"

using namespace VSTGUI;

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
