// TextLine: one line of text with a caret and a selection, edited by whole characters.
#pragma once

#include <cstddef>
#include <string>

namespace VSTGUI {

class TextLine {
public:
    explicit TextLine(size_t mostCharacters) : limit(mostCharacters) { }

    // Takes everything, also beyond the limit, and selects it.
    void setText(const char* utf8);
    const std::string& getText() const { return text; }
    // Byte offsets; the selection reaches from anchor to caret, in either order.
    size_t getCaret() const { return caret; }
    size_t selectionStart() const;
    size_t selectionEnd() const;
    bool hasSelection() const { return caret != anchor; }
    std::string selectedText() const;

    void selectAll();
    // Keep the anchor with select, give the selection up without.
    void moveTo(size_t offset, bool select);
    void moveLeft(bool select);
    void moveRight(bool select);
    void moveHome(bool select) { moveTo(0, select); }
    void moveEnd(bool select) { moveTo(text.size(), select); }

    // These replace or remove the selection first. True when the text changed.
    // Control characters are left out; what exceeds the limit is cut.
    bool insert(const char* utf8);
    bool deleteBackward();
    bool deleteForward();

private:
    bool removeSelection();

    size_t limit;
    std::string text;
    size_t caret{0};
    size_t anchor{0};
};

}  // namespace VSTGUI
