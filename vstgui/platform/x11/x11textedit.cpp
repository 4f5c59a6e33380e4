#include "vstgui/platform/x11/x11textedit.h"

#include "platform/Utf8.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/platform/iplatformfont.h"

#include <X11/keysym.h>
#include <algorithm>

namespace VSTGUI {
namespace X11 {

namespace {

constexpr CCoord kCaretWidth = 1.;
constexpr CCoord kCaretMargin = 2.;  // above and below, pixels

}  // namespace

X11TextEdit::X11TextEdit(X11Frame& frame, IPlatformTextEditCallback* textEdit)
    : IPlatformTextEdit(textEdit), frame(&frame), original(textEdit->platformGetText()),
      line(static_cast<size_t>(std::max(textEdit->platformGetMaxCharacters(), 0))),
      rect(textEdit->platformGetSize())
{
    line.setText(original.c_str());
    frame.setTextBox(this);
    frame.invalidRect(rect);
}

X11TextEdit::~X11TextEdit()
{
    if (frame->getTextBox() == this)
        frame->setTextBox(nullptr);
    frame->invalidRect(rect);
}

bool X11TextEdit::setText(UTF8StringPtr newText)
{
    line.setText(newText);
    frame->invalidRect(rect);
    return true;
}

bool X11TextEdit::updateSize()
{
    frame->invalidRect(rect);
    rect = textEdit->platformGetSize();
    frame->invalidRect(rect);
    return true;
}

CCoord X11TextEdit::widthUpTo(size_t offset) const
{
    const IPlatformFont* font = textEdit->platformGetFont()->getPlatformFont();
    return font ? font->getStringWidth(line.getText().substr(0, offset).c_str()) : 0.;
}

CCoord X11TextEdit::textStart() const
{
    const CCoord inset = textEdit->platformGetTextInset().x;
    const CCoord left = rect.left + inset;
    const CCoord room = rect.getWidth() - 2. * inset - kCaretWidth;
    const CCoord width = widthUpTo(line.getText().size());
    if (width > room)
        return std::floor(left - std::max(0., widthUpTo(line.getCaret()) - room));
    const CHoriTxtAlign align = textEdit->platformGetHoriTxtAlign();
    const CCoord share = align == kLeftText ? 0. : align == kRightText ? 1. : 0.5;
    return std::floor(left + (room - width) * share);
}

size_t X11TextEdit::offsetAt(CCoord x) const
{
    const CCoord start = textStart();
    size_t offset = 0;
    while (offset < line.getText().size()) {
        const size_t next = platform::nextCharacter(line.getText(), offset);
        if (x < start + (widthUpTo(offset) + widthUpTo(next)) / 2.)
            break;
        offset = next;
    }
    return offset;
}

void X11TextEdit::draw(CDrawContext& context, const CRect& updateRect)
{
    CRect clip(rect);
    CRect visible(textEdit->platformGetVisibleSize());
    if (clip.bound(updateRect).bound(visible).isEmpty())
        return;
    context.saveGlobalState();
    context.setClipRect(clip);
    context.setFillColor(textEdit->platformGetBackColor());
    context.drawRect(rect, kDrawFilled);

    const CCoord start = textStart();
    const CCoord top = rect.top + kCaretMargin;
    const CCoord bottom = rect.bottom - kCaretMargin;
    context.setFont(textEdit->platformGetFont());
    context.setFontColor(textEdit->platformGetFontColor());
    context.drawString(getText(), CRect(start, rect.top, rect.right, rect.bottom), kLeftText);
    if (line.hasSelection()) {
        // The colours of text and background exchanged.
        const CRect selection(start + widthUpTo(line.selectionStart()), top,
                              start + widthUpTo(line.selectionEnd()), bottom);
        context.setFillColor(textEdit->platformGetFontColor());
        context.drawRect(selection, kDrawFilled);
        context.setClipRect(clip.bound(selection));
        context.setFontColor(textEdit->platformGetBackColor());
        context.drawString(getText(), CRect(start, rect.top, rect.right, rect.bottom), kLeftText);
    } else {
        const CCoord x = std::floor(start + widthUpTo(line.getCaret()));
        context.setFillColor(textEdit->platformGetFontColor());
        context.drawRect(CRect(x, top, x + kCaretWidth, bottom), kDrawFilled);
    }
    context.restoreGlobalState();
}

void X11TextEdit::key(const KeyInput& input)
{
    const CBaseObjectGuard guard(this);
    if (handleEndKey(input))
        return;
    changed(edit(input));
}

// Return, Escape and Tab. The control ends the editing and releases this object; the guard in key
// keeps it.
bool X11TextEdit::handleEndKey(const KeyInput& input)
{
    const int virt = input.code.virt;
    if (virt != VKEY_RETURN && virt != VKEY_ENTER && virt != VKEY_ESCAPE && virt != VKEY_TAB)
        return false;
    if (textEdit->platformOnKeyDown(input.code) || frame->getTextBox() != this)
        return true;
    if (virt == VKEY_ESCAPE)
        line.setText(original.c_str());
    textEdit->platformLooseFocus(virt == VKEY_RETURN || virt == VKEY_ENTER);
    return true;
}

void X11TextEdit::end()
{
    const CBaseObjectGuard guard(this);
    textEdit->platformLooseFocus(false);
}

bool X11TextEdit::edit(const KeyInput& input)
{
    const bool select = (input.code.modifier & MODIFIER_SHIFT) != 0;
    switch (input.code.virt) {
    case VKEY_LEFT:
        line.moveLeft(select);
        return false;
    case VKEY_RIGHT:
        line.moveRight(select);
        return false;
    case VKEY_HOME:
        line.moveHome(select);
        return false;
    case VKEY_END:
        line.moveEnd(select);
        return false;
    case VKEY_BACK:
        return line.deleteBackward();
    case VKEY_DELETE:
        return line.deleteForward();
    default:
        break;
    }
    if (input.code.modifier & MODIFIER_CONTROL)
        return editByShortcut(input.symbol);
    if (input.code.modifier & MODIFIER_ALTERNATE)
        return false;
    return line.insert(input.text.c_str());
}

bool X11TextEdit::editByShortcut(KeySym symbol)
{
    switch (symbol) {
    case XK_a:
    case XK_A:
        line.selectAll();
        return false;
    case XK_c:
    case XK_C:
    case XK_x:
    case XK_X:
        if (!line.hasSelection())
            return false;
        frame->copyText(line.selectedText());
        return (symbol == XK_x || symbol == XK_X) && line.deleteBackward();
    case XK_v:
    case XK_V:
        frame->requestText();
        return false;
    default:
        return false;
    }
}

void X11TextEdit::changed(bool textChanged)
{
    frame->invalidRect(rect);
    if (textChanged)
        textEdit->platformTextDidChange();
}

void X11TextEdit::press(const CPoint& where, bool selectAll, bool extend)
{
    if (selectAll)
        line.selectAll();
    else
        line.moveTo(offsetAt(where.x), extend);
    changed(false);
}

void X11TextEdit::drag(const CPoint& where)
{
    line.moveTo(offsetAt(where.x), true);
    changed(false);
}

void X11TextEdit::paste(const std::string& text)
{
    const CBaseObjectGuard guard(this);
    changed(line.insert(text.c_str()));
}

}  // namespace X11
}  // namespace VSTGUI
