#include "editor/controls/Filmstrip.h"

#include "params/lookup/Truncate.h"

#include <algorithm>

using namespace VSTGUI;

int32_t stepOf(float value, int32_t steps)
{
    const int32_t last = std::max(steps - 1, 0);
    const int32_t step = truncate(double{value * static_cast<float>(last) + 0.5f});
    return std::clamp(step, 0, last);
}

CCoord frameHeight(const CBitmap* bitmap, int32_t frames)
{
    return bitmap && frames > 0 ? truncate(bitmap->getHeight()) / frames : 0;
}

void drawFrame(CDrawContext* context, CBitmap* bitmap, const CRect& rect, CCoord top, float alpha)
{
    if (bitmap)
        bitmap->draw(context, rect, CPoint(0, top), alpha);
}
