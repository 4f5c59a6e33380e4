#include "vstgui/platform/x11/menupanel.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/controls/coptionmenu.h"

#include <algorithm>

namespace VSTGUI {
namespace X11 {

namespace {

constexpr CCoord kBorder = 3.;
constexpr int32_t kMaxEntriesInColumns = 160;

int32_t rowsOf(const COptionMenu& menu, CCoord maxHeight)
{
    const int32_t count = std::max(menu.getNbEntries(), 1);
    const int32_t wanted = menu.getNbItemsPerColumn();
    const int32_t maxRows =
        std::max(static_cast<int32_t>((maxHeight - 2. * kBorder) / MenuEntries::kHeight), 1);
    const bool columns = wanted > 0 && count < kMaxEntriesInColumns;
    return std::min(columns ? std::min(wanted, count) : count, maxRows);
}

}  // namespace

MenuPanel::MenuPanel(const COptionMenu& menu, const CPoint& maxSize)
    : entries(menu), rows(rowsOf(menu, maxSize.y)), current(menu.getCurrentIndex(true))
{
    const int32_t columns = (std::max(count(), 1) + rows - 1) / rows;
    columnWidth = std::min(entries.getWidth(), std::floor((maxSize.x - 2. * kBorder) / columns));
    size(2. * kBorder + columnWidth * columns, 2. * kBorder + MenuEntries::kHeight * rows);
}

CRect MenuPanel::rectOf(int32_t entry) const
{
    const CPoint corner(kBorder + columnWidth * (entry / rows),
                        kBorder + MenuEntries::kHeight * (entry % rows));
    return {corner, CPoint(columnWidth, MenuEntries::kHeight)};
}

bool MenuPanel::isSelectable(int32_t entry) const
{
    return entry >= 0 && entry < count() && entries.get()[static_cast<size_t>(entry)].selectable;
}

int32_t MenuPanel::entryAt(const CPoint& where) const
{
    for (int32_t entry = 0; entry < count(); ++entry)
        if (isSelectable(entry) && rectOf(entry).pointInside(where))
            return entry;
    return -1;
}

int32_t MenuPanel::neighbour(int32_t entry, int32_t direction) const
{
    int32_t next = entry < 0 && direction < 0 ? count() - 1 : entry + direction;
    while (next >= 0 && next < count() && !isSelectable(next))
        next += direction;
    return isSelectable(next) ? next : entry;
}

int32_t MenuPanel::beside(int32_t entry, int32_t direction) const
{
    if (entry < 0)
        return neighbour(entry, direction);
    const int32_t next = entry + direction * rows;
    return isSelectable(next) ? next : entry;
}

void MenuPanel::draw(CDrawContext& context, int32_t highlighted) const
{
    context.setFillColor(entries.getBackColor());
    context.setFrameColor(entries.getFrameColor());
    context.drawRect(CRect(CPoint(), size), kDrawFilledAndStroked);
    for (int32_t entry = 0; entry < count(); ++entry)
        entries.draw(context, rectOf(entry), entries.get()[static_cast<size_t>(entry)],
                     entry == highlighted);
}

}  // namespace X11
}  // namespace VSTGUI
