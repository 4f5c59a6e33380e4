#include "editor/controls/CPoweredResizeButton.h"

using namespace VSTGUI;

bool CPoweredResizeButton::onWheel(const CPoint& where, const float& distance,
                                   const CButtonState& buttons)
{
    return CView::onWheel(where, distance, buttons);
}
