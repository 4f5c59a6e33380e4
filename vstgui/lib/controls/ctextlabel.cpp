// One line of text.
#include "vstgui/lib/controls/ctextlabel.h"

namespace VSTGUI {

CTextLabel::CTextLabel(const CRect& rect, UTF8StringPtr t, CBitmap* back, const int32_t s)
    : CParamDisplay(rect, back, s), text(t ? t : "")
{
}

void CTextLabel::setText(UTF8StringPtr newText)
{
    const std::string wanted = newText ? newText : "";
    if (wanted == text)
        return;
    text = wanted;
    setDirty();
}

void CTextLabel::draw(CDrawContext* context)
{
    drawBack(context);
    drawPlatformText(context, text.c_str());
    setDirty(false);
}

}  // namespace VSTGUI
