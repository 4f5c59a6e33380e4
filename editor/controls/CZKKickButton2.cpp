#include "editor/controls/CZKKickButton2.h"

using namespace VSTGUI;

void CZKKickButton2::draw(CDrawContext* context)
{
    drawFrameAt(context, isHovered() ? 1 : 0);
}
