#include "editor/controls/CBlinkLEDButton.h"

#include "editor/controls/Filmstrip.h"

#include <algorithm>

using namespace VSTGUI;

void CBlinkLEDButton::draw(CDrawContext* context)
{
    drawFrame(context, getDrawBackground(), getViewSize(), 0);
    // Drawing the dark frame over itself would show at translucent edges.
    if (frameTop() != 0)
        drawFrame(context, getDrawBackground(), getViewSize(), frameTop(),
                  std::clamp(blinkLevel, 0.f, 1.f));
    setDirty(false);
}
