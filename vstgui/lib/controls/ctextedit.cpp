#include "vstgui/lib/controls/ctextedit.h"

#include "vstgui/lib/cframe.h"

namespace VSTGUI {

const IdStringPtr kMsgLooseFocus = "text edit lost focus";

CTextEdit::CTextEdit(const CRect& size, IControlListener* listener, int32_t tag, UTF8StringPtr text,
                     CBitmap* background, const int32_t style)
    : CTextLabel(size, text, background, style)
{
    this->listener = listener;
    this->tag = tag;
    setWantsFocus(true);
}

CTextEdit::CTextEdit(const CTextEdit& other)
    : CTextLabel(other), IPlatformTextEditCallback(other),
      immediateTextChange(other.immediateTextChange), stringToValue(other.stringToValue)
{
}

CTextEdit::~CTextEdit() = default;

void CTextEdit::beforeDelete()
{
    // Here only if it was opened while the control was detached.
    if (platformControl)
        std::exchange(platformControl, nullptr)->forget();
    CTextLabel::beforeDelete();
}

void CTextEdit::setStringToValueFunction(const StringToValueFunction& function)
{
    stringToValue = function;
}

void CTextEdit::showText(UTF8StringPtr newText)
{
    CTextLabel::setText(newText);
    if (!platformControl)
        return;
    if (!sameText(platformControl->getText(), text.c_str()))
        platformControl->setText(text.c_str());
    shownText = platformControl->getText();
}

void CTextEdit::setValue(float newValue)
{
    CTextLabel::setValue(newValue);
    showText(valueText().c_str());
}

void CTextEdit::setText(UTF8StringPtr newText)
{
    float parsed = getValue();
    if (stringToValue && stringToValue(newText ? newText : "", parsed, this))
        CTextLabel::setValue(parsed);
    showText(newText);
}

void CTextEdit::draw(CDrawContext* context)
{
    drawBack(context);
    if (!platformControl)
        drawPlatformText(context, text.c_str());
    setDirty(false);
}

CMouseEventResult CTextEdit::onMouseDown(CPoint&, const CButtonState& buttons)
{
    if (!(buttons & kLButton) || !getFrame() || getFrame()->getFocusView() == this)
        return kMouseEventNotHandled;
    if ((style & VSTGUI::kDoubleClickStyle) && !buttons.isDoubleClick())
        return kMouseEventNotHandled;
    takeFocus();
    return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

int32_t CTextEdit::onKeyDown(VstKeyCode& keyCode)
{
    if (!platformControl || keyCode.modifier != 0)
        return -1;
    if (keyCode.virt == VKEY_ESCAPE) {
        platformControl->setText(text.c_str());
        dropFocus(false);
        return 1;
    }
    if (keyCode.virt == VKEY_RETURN || keyCode.virt == VKEY_ENTER) {
        dropFocus(true);
        return 1;
    }
    return -1;
}

bool CTextEdit::wantsFocus() const
{
    if ((style & VSTGUI::kDoubleClickStyle) && !platformControl)
        return false;
    return CTextLabel::wantsFocus();
}

void CTextEdit::takeFocus()
{
    CFrame* frame = getFrame();
    if (!frame || !frame->getPlatformFrame())
        return;
    bWasReturnPressed = false;
    if (!platformControl) {
        platformControl = frame->getPlatformFrame()->createPlatformTextEdit(this);
        if (platformControl)
            shownText = platformControl->getText();
    }
    invalid();
    if (frame->getFocusView() != this)
        frame->setFocusView(this);
}

void CTextEdit::looseFocus()
{
    if (!platformControl)
        return;
    const CBaseObjectGuard guard(this);
    {
        const auto box = owned(std::exchange(platformControl, nullptr));
        updateText(box);
    }
    invalid();
    for (CView* v = getParentView(); v; v = v->getParentView()) {
        if (v->notify(this, kMsgLooseFocus) == kMessageNotified)
            break;
    }
}

void CTextEdit::updateText(IPlatformTextEdit* box)
{
    const UTF8StringPtr typed = box->getText();
    if (sameText(typed, shownText.c_str()))
        return;
    const std::string newText = typed ? typed : "";
    beginEdit();
    setText(newText.c_str());
    valueChanged();
    endEdit();
}

void CTextEdit::dropFocus(bool returnPressed)
{
    const CBaseObjectGuard guard(this);
    bWasReturnPressed = returnPressed;
    CFrame* frame = getFrame();
    if (frame && frame->getFocusView() == this)
        frame->setFocusView(nullptr);
    looseFocus();  // no effect if the frame has called it
}

void CTextEdit::setViewSize(const CRect& rect, bool doInvalid)
{
    CTextLabel::setViewSize(rect, doInvalid);
    if (platformControl)
        platformControl->updateSize();
}

void CTextEdit::parentSizeChanged()
{
    if (platformControl)
        platformControl->updateSize();
}

bool CTextEdit::removed(CView* parent)
{
    looseFocus();
    return CTextLabel::removed(parent);
}

CRect CTextEdit::platformGetSize() const
{
    CPoint corner(getViewSize().getTopLeft());
    localToFrame(corner);
    return CRect(corner, getViewSize().getSize());
}

CRect CTextEdit::platformGetVisibleSize() const
{
    const CRect visible = getVisibleViewSize();
    CPoint corner(visible.getTopLeft());
    localToFrame(corner);
    return CRect(corner, visible.getSize());
}

void CTextEdit::platformLooseFocus(bool returnPressed)
{
    dropFocus(returnPressed);
}

bool CTextEdit::platformOnKeyDown(const VstKeyCode& key)
{
    VstKeyCode copy(key);
    return getFrame() && getFrame()->onKeyDown(copy) == 1;
}

void CTextEdit::platformTextDidChange()
{
    if (immediateTextChange && platformControl)
        updateText(platformControl);
}

}  // namespace VSTGUI
