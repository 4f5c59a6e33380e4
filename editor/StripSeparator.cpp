#include "editor/StripSeparator.h"

#include "BitmapNumbers.h"

bool StripSeparator::attach(VSTGUI::CFrame* parent, const VSTGUI::CPoint& origin)
{
    return attachContainer(parent, origin, {13, 448}, bitmaps::kStripSeparator);
}
