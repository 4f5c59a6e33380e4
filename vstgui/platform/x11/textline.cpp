#include "vstgui/platform/x11/textline.h"

#include "platform/Utf8.h"

#include <algorithm>

namespace VSTGUI {

void TextLine::setText(const char* utf8)
{
    text = platform::validUtf8(utf8);
    selectAll();
}

size_t TextLine::selectionStart() const
{
    return std::min(caret, anchor);
}

size_t TextLine::selectionEnd() const
{
    return std::max(caret, anchor);
}

std::string TextLine::selectedText() const
{
    return text.substr(selectionStart(), selectionEnd() - selectionStart());
}

void TextLine::selectAll()
{
    anchor = 0;
    caret = text.size();
}

void TextLine::moveTo(size_t offset, bool select)
{
    caret = std::min(offset, text.size());
    if (!select)
        anchor = caret;
}

void TextLine::moveLeft(bool select)
{
    const bool collapse = hasSelection() && !select;
    moveTo(collapse ? selectionStart() : platform::previousCharacter(text, caret), select);
}

void TextLine::moveRight(bool select)
{
    const bool collapse = hasSelection() && !select;
    moveTo(collapse ? selectionEnd() : platform::nextCharacter(text, caret), select);
}

bool TextLine::removeSelection()
{
    if (!hasSelection())
        return false;
    const size_t start = selectionStart();
    text.erase(start, selectionEnd() - start);
    moveTo(start, false);
    return true;
}

bool TextLine::insert(const char* utf8)
{
    std::string added = platform::validUtf8(utf8);
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; };
    added.erase(std::remove_if(added.begin(), added.end(), isControl), added.end());
    if (added.empty())
        return false;
    bool changed = removeSelection();
    const size_t present = platform::countCharacters(text);
    size_t fits = 0;
    for (size_t i = present; i < limit && fits < added.size(); ++i)
        fits = platform::nextCharacter(added, fits);
    text.insert(caret, added, 0, fits);
    moveTo(caret + fits, false);
    return changed || fits > 0;
}

bool TextLine::deleteBackward()
{
    if (!hasSelection())
        moveTo(platform::previousCharacter(text, caret), true);
    return removeSelection();
}

bool TextLine::deleteForward()
{
    if (!hasSelection())
        moveTo(platform::nextCharacter(text, caret), true);
    return removeSelection();
}

}  // namespace VSTGUI
