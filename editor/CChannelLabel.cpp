#include "editor/CChannelLabel.h"

#include "params/lookup/Truncate.h"

#include "editor/controls/PressToToggle.h"

using namespace VSTGUI;

namespace {

constexpr CCoord kRowHeight = 32;
constexpr CCoord kMidSideRows = 96;  // pixels from a stereo row to the same one in Mid/Side

struct Layout {
    CCoord right;
    int32_t row;
};
// By layout mode.
constexpr Layout kLayouts[] = {{304, 0}, {554, 1}, {554, 1}, {804, 2}};

}  // namespace

CChannelLabel::CChannelLabel(const CRect& size, IControlListener* listener, int32_t tag,
                             CBitmap* background)
    : CMovieBitmap(size, listener, tag, background)
{
}

void CChannelLabel::setValue(float newValue)
{
    CMovieBitmap::setValue(newValue);
    const int32_t state = switchValue(static_cast<double>(newValue));
    if (state == midSide)
        return;
    midSide = state;
    sourceOffset.y += midSide ? kMidSideRows : -kMidSideRows;
}

void CChannelLabel::setLayoutMode(int32_t mode)
{
    if (mode < 0 || mode > 3)
        return;
    layoutMode = mode;
    const Layout& layout = kLayouts[mode];
    sourceOffset.y = kRowHeight * layout.row + (midSide ? kMidSideRows : 0);
    CRect rect = getViewSize();
    rect.right = layout.right;
    setViewSize(rect, true);
    setMouseableArea(rect);
    setDirty();
}

void CChannelLabel::draw(CDrawContext* context)
{
    if (CBitmap* const bitmap = getDrawBackground())
        bitmap->draw(context, getViewSize(), sourceOffset);
    setDirty(false);
}

CMouseEventResult CChannelLabel::onMouseDown(CPoint& /*where*/, const CButtonState& buttons)
{
    return pressToToggle(*this, buttons);
}
