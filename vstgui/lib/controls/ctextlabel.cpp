#include "vstgui/lib/controls/ctextlabel.h"

namespace VSTGUI {

CTextLabel::CTextLabel(const CRect& size, UTF8StringPtr text, CBitmap* background,
                       const int32_t style)
    : CParamDisplay(size, background, style), text(text ? text : "")
{
}

void CTextLabel::setText(UTF8StringPtr newText)
{
    const std::string copy = newText ? newText : "";
    if (copy == text)
        return;
    text = copy;
    setDirty();
}

void CTextLabel::draw(CDrawContext* context)
{
    drawBack(context);
    drawPlatformText(context, text.c_str());
    setDirty(false);
}

}  // namespace VSTGUI
