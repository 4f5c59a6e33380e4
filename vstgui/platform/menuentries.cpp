#include "vstgui/platform/menuentries.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/cdrawmethods.h"
#include "vstgui/lib/controls/coptionmenu.h"
#include "vstgui/platform/iplatformfont.h"

#include <algorithm>

namespace VSTGUI {

namespace {

constexpr CCoord kCheckWidth = 20.;
constexpr CCoord kRightMargin = 14.;
constexpr CCoord kMinWidth = 80.;

CColor middle(const CColor& a, const CColor& b)
{
    const auto mean = [](int x, int y) { return static_cast<uint8_t>((x + y) / 2); };
    return {mean(a.red, b.red), mean(a.green, b.green), mean(a.blue, b.blue), 255};
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

MenuEntries::MenuEntries(const COptionMenu& menu)
    : font(menu.getFont()), fontColor(menu.getFontColor()),
      dimmedColor(middle(menu.getFontColor(), menu.getBackColor())), backColor(menu.getBackColor()),
      frameColor(menu.getFrameColor())
{
    const int32_t style = menu.getStyle();
    const bool several = (style & kMultipleCheckStyle) == kMultipleCheckStyle;
    for (int32_t i = 0; i < menu.getNbEntries(); ++i) {
        const CMenuItem& item = *menu.getEntry(i);
        const bool current = (style & kCheckStyle) != 0 && i == menu.getCurrentIndex(true);
        const bool selectable = item.isEnabled() && !item.isSeparator() && !item.isTitle();
        entries.push_back({item.getTitle(), item.isSeparator(), selectable,
                           several ? item.isChecked() : current});
    }
}

CCoord MenuEntries::getWidth() const
{
    const IPlatformFont* platformFont = font->getPlatformFont();
    CCoord width = kMinWidth;
    for (const Entry& entry : entries) {
        const CCoord text = platformFont ? platformFont->getStringWidth(entry.title.c_str()) : 0.;
        width = std::max(width, std::ceil(text) + kCheckWidth + kRightMargin);
    }
    return width;
}

void MenuEntries::draw(CDrawContext& context, const CRect& rect, const Entry& entry,
                       bool highlighted) const
{
    context.setFillColor(highlighted ? fontColor : backColor);
    context.drawRect(rect, kDrawFilled);
    if (entry.separator) {
        const CCoord y = std::floor(rect.getCenter().y);
        context.setFillColor(dimmedColor);
        context.drawRect(CRect(rect.left + 4., y, rect.right - 4., y + 1.), kDrawFilled);
        return;
    }
    const CColor color = highlighted ? backColor : entry.selectable ? fontColor : dimmedColor;
    if (entry.checked)
        drawCheck(context, CPoint(rect.left + kCheckWidth / 2., rect.getCenter().y), color);
    const CRect text(rect.left + kCheckWidth, rect.top, rect.right, rect.bottom);
    context.setFont(font);
    context.setFontColor(color);
    context.drawString(
        CDrawMethods::createTruncatedText(entry.title.c_str(), font, text.getWidth()).c_str(), text,
        kLeftText);
}

}  // namespace VSTGUI
