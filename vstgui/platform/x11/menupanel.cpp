#include "vstgui/platform/x11/menupanel.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/controls/coptionmenu.h"
#include "vstgui/platform/iplatformfont.h"

#include <algorithm>

namespace VSTGUI {
namespace X11 {

namespace {

constexpr CCoord kRowHeight = 20.;
constexpr CCoord kBorder = 3.;
constexpr CCoord kCheckWidth = 20.;
constexpr CCoord kRightMargin = 14.;
constexpr CCoord kMinColumnWidth = 80.;
constexpr int32_t kMaxEntriesInColumns = 160;

constexpr CColor kBack(250, 250, 250, 255);
constexpr CColor kEdge(150, 150, 150, 255);
constexpr CColor kLine(215, 215, 215, 255);
constexpr CColor kText(20, 20, 20, 255);
constexpr CColor kDimmed(150, 150, 150, 255);
constexpr CColor kHighlight(51, 120, 215, 255);

int32_t rowsOf(const COptionMenu& menu, CCoord maxHeight)
{
    const int32_t count = std::max(menu.getNbEntries(), 1);
    const int32_t wanted = menu.getNbItemsPerColumn();
    const int32_t maxRows =
        std::max(static_cast<int32_t>((maxHeight - 2. * kBorder) / kRowHeight), 1);
    const bool columns = wanted > 0 && count < kMaxEntriesInColumns;
    return std::min(columns ? std::min(wanted, count) : count, maxRows);
}

// A tick mark seven pixels wide.
void drawCheck(CDrawContext& context, const CPoint& centre, const CColor& color)
{
    context.setFillColor(color);
    for (int i = 0; i < 7; ++i) {
        const double x = std::floor(centre.x) - 3. + i;
        const double y = std::floor(centre.y) + (i < 3 ? i - 1. : 3. - i);
        context.drawRect(CRect(x, y - 1., x + 1., y + 1.), kDrawFilled);
    }
}

}  // namespace

MenuPanel::MenuPanel(const COptionMenu& menu, CCoord maxHeight)
    : rows(rowsOf(menu, maxHeight)), current(menu.getCurrentIndex(true))
{
    const int32_t style = menu.getStyle();
    const bool several = (style & kMultipleCheckStyle) == kMultipleCheckStyle;
    const IPlatformFont* font = kNormalFont->getPlatformFont();
    CCoord width = kMinColumnWidth;
    for (int32_t i = 0; i < menu.getNbEntries(); ++i) {
        const CMenuItem* item = menu.getEntry(i);
        const bool checked =
            several ? item->isChecked() : (style & VSTGUI::kCheckStyle) != 0 && i == current;
        const bool selectable = item->isEnabled() && !item->isSeparator() && !item->isTitle();
        entries.push_back({item->getTitle(), CRect(), item->isSeparator(), selectable, checked});
        const CCoord text = font ? font->getStringWidth(item->getTitle()) : 0.;
        width = std::max(width, std::ceil(text) + kCheckWidth + kRightMargin);
    }
    for (int32_t i = 0; i < static_cast<int32_t>(entries.size()); ++i) {
        const CPoint corner(kBorder + width * (i / rows), kBorder + kRowHeight * (i % rows));
        entries[static_cast<size_t>(i)].rect = CRect(corner, CPoint(width, kRowHeight));
    }
    const int32_t columns = (std::max(menu.getNbEntries(), 1) + rows - 1) / rows;
    size(2. * kBorder + width * columns, 2. * kBorder + kRowHeight * rows);
}

bool MenuPanel::isSelectable(int32_t entry) const
{
    return entry >= 0 && entry < static_cast<int32_t>(entries.size())
        && entries[static_cast<size_t>(entry)].selectable;
}

int32_t MenuPanel::entryAt(const CPoint& where) const
{
    const auto it = std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) {
        return entry.selectable && entry.rect.pointInside(where);
    });
    return it == entries.end() ? -1 : static_cast<int32_t>(it - entries.begin());
}

int32_t MenuPanel::neighbour(int32_t entry, int32_t direction) const
{
    const auto count = static_cast<int32_t>(entries.size());
    int32_t next = entry < 0 && direction < 0 ? count - 1 : entry + direction;
    while (next >= 0 && next < count && !isSelectable(next))
        next += direction;
    return isSelectable(next) ? next : entry;
}

int32_t MenuPanel::beside(int32_t entry, int32_t columns) const
{
    const int32_t next = entry + columns * rows;
    return isSelectable(next) ? next : entry;
}

void MenuPanel::draw(CDrawContext& context, int32_t highlighted) const
{
    const CRect all(CPoint(), size);
    context.setFillColor(kBack);
    context.setFrameColor(kEdge);
    context.drawRect(all, kDrawFilledAndStroked);
    context.setFont(kNormalFont);
    for (size_t i = 0; i < entries.size(); ++i) {
        const Entry& entry = entries[i];
        const CRect& r = entry.rect;
        if (entry.separator) {
            const CCoord y = std::floor(r.getCenter().y);
            context.setFillColor(kLine);
            context.drawRect(CRect(r.left + 4., y, r.right - 4., y + 1.), kDrawFilled);
            continue;
        }
        const bool lit = static_cast<int32_t>(i) == highlighted;
        if (lit) {
            context.setFillColor(kHighlight);
            context.drawRect(r, kDrawFilled);
        }
        const CColor color = lit ? kWhiteCColor : entry.selectable ? kText : kDimmed;
        if (entry.checked)
            drawCheck(context, CPoint(r.left + kCheckWidth / 2., r.getCenter().y), color);
        context.setFontColor(color);
        context.drawString(entry.title.c_str(),
                           CRect(r.left + kCheckWidth, r.top, r.right, r.bottom), kLeftText);
    }
}

}  // namespace X11
}  // namespace VSTGUI
