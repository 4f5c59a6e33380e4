// CParamDisplay: text on a background bitmap or colour.
#include "vstgui/lib/controls/cparamdisplay.h"

#include "vstgui/lib/cdrawcontext.h"

#include <cstdio>

namespace VSTGUI {

CParamDisplay::CParamDisplay(const CRect& size, CBitmap* background, const int32_t style)
    : CControl(size, nullptr, -1, background), fontID(kNormalFont), style(style)
{
}

void CParamDisplay::setFont(CFontRef font)
{
    if (!font)
        return;
    fontID = font;
    setDirty();
}

void CParamDisplay::setValueToStringFunction(const ValueToStringFunction& function)
{
    valueToString = function;
    setDirty();
}

std::string CParamDisplay::valueText() const
{
    std::string made;
    if (valueToString && valueToString(getValue(), made, const_cast<CParamDisplay*>(this)))
        return made;
    char digits[400];  // more than the longest float with 255 decimals
    std::snprintf(digits, sizeof digits, "%.*f", static_cast<int>(valuePrecision),
                  static_cast<double>(getValue()));
    return digits;
}

void CParamDisplay::draw(CDrawContext* context)
{
    if (style & VSTGUI::kNoDrawStyle)
        return;
    drawBack(context);
    drawPlatformText(context, valueText().c_str());
    setDirty(false);
}

void CParamDisplay::drawBack(CDrawContext* context, CBitmap* newBack)
{
    if (CBitmap* bitmap = newBack ? newBack : getDrawBackground()) {
        bitmap->draw(context, getViewSize(), getBackOffset());
        return;
    }
    if (getTransparency())
        return;
    const bool framed = (style & (kNoFrame | k3DIn | k3DOut)) == 0;
    context->setDrawMode(kAliasing);
    context->setFillColor(backColor);
    context->drawRect(getViewSize(), kDrawFilled);
    if (framed) {
        context->setLineStyle(kLineSolid);
        context->setLineWidth(frameWidth);
        context->setFrameColor(frameColor);
        context->drawRect(getViewSize(), kDrawStroked);
    }
}

void CParamDisplay::drawPlatformText(CDrawContext* context, UTF8StringPtr text)
{
    drawPlatformText(context, text, getViewSize());
}

void CParamDisplay::drawPlatformText(CDrawContext* context, UTF8StringPtr text, const CRect& rect)
{
    if (style & VSTGUI::kNoTextStyle)
        return;
    CRect inner(rect);
    inner.inset(textInset);
    context->saveGlobalState();
    CRect clip;
    context->setClipRect(context->getClipRect(clip).bound(inner));
    context->setDrawMode(kAntiAliasing);
    context->setFont(fontID);
    if (style & kShadowText) {
        CRect shadow(inner);
        context->setFontColor(shadowColor);
        context->drawString(text, shadow.offset(1, 1), horiTxtAlign, antialias);
    }
    context->setFontColor(fontColor);
    context->drawString(text, inner, horiTxtAlign, antialias);
    context->restoreGlobalState();
}

}  // namespace VSTGUI
