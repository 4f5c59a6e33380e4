#include "editor/controls/CZKRTextEdit.h"

#include "editor/controls/SystemBox.h"

#include "vstgui/lib/cbitmap.h"
#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/cdrawmethods.h"
#include "vstgui/lib/cframe.h"

using namespace VSTGUI;

void CZKRTextEdit::setTextColor(const CColor& color)
{
    textColor = color;
    setDirty();
}

void CZKRTextEdit::setTextShadowColor(const CColor& color)
{
    textShadowColor = color;
    setDirty();
}

void CZKRTextEdit::setBoxTextColor(const CColor& color)
{
    boxTextColor = color;
}

void CZKRTextEdit::setBoxBackColor(const CColor& color)
{
    boxBackColor = color;
}

void CZKRTextEdit::setTextSize(float pixels)
{
    textSize = pixels;
    setDirty();
}

void CZKRTextEdit::setTextOffset(const CPoint& offset)
{
    textOffset = offset;
    setDirty();
}

void CZKRTextEdit::setMaxCharacters(int32_t count)
{
    maxCharacters = count;
}

void CZKRTextEdit::setValue(float newValue)
{
    CControl::setValue(newValue);
}

void CZKRTextEdit::draw(CDrawContext* context)
{
    if (CBitmap* picture = getDrawBackground())
        picture->draw(context, getViewSize(), getBackOffset());
    if (!editingText)
        drawLine(context);
    setDirty(false);
}

void CZKRTextEdit::drawLine(CDrawContext* context)
{
    CRect rect(getViewSize());
    rect.inset(getTextInset());
    context->saveGlobalState();
    CRect clip;
    context->setClipRect(context->getClipRect(clip).bound(rect));
    context->setFont(getFont(), double{textSize});
    const std::string line =
        CDrawMethods::createTruncatedText(getText(), context->getFont(), rect.getWidth());
    rect.offset(textOffset);
    if (textShadowColor) {
        context->setFontColor(*textShadowColor);
        context->drawString(line.c_str(), CRect(rect).offset(1, 1), getHoriAlign(), getAntialias());
    }
    context->setFontColor(textColor.value_or(getFontColor()));
    context->drawString(line.c_str(), rect, getHoriAlign(), getAntialias());
    context->restoreGlobalState();
}

void CZKRTextEdit::takeFocus()
{
    if (!getFrame())
        return;
    if (!platformControl) {
        editingText = true;
        platformControl = createSystemBox(*getFrame(), this);
    }
    CTextEdit::takeFocus();
    editingText = platformControl != nullptr;
    setDirty();
}

void CZKRTextEdit::looseFocus()
{
    const CBaseObjectGuard guard(this);
    editingText = false;
    CTextEdit::looseFocus();
    setDirty();
}

CColor CZKRTextEdit::platformGetFontColor() const
{
    return boxTextColor.value_or(getFontColor());
}

CColor CZKRTextEdit::platformGetBackColor() const
{
    return boxBackColor.value_or(getBackColor());
}
