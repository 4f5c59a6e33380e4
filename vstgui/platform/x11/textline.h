// TextLine: an editable line of UTF-8 text with a caret and a selection.
#pragma once

#include <cstddef>
#include <string>

namespace VSTGUI {

class TextLine {
public:
    // Limit in characters (code points).
    explicit TextLine(size_t limit) : limit(limit) { }

    // Sets the text, even beyond the limit, and selects all of it.
    void setText(const char* utf8);
    const std::string& getText() const { return text; }
    // Byte offsets. The selection lies between anchor and caret, whichever is first.
    size_t getCaret() const { return caret; }
    size_t selectionStart() const;
    size_t selectionEnd() const;
    bool hasSelection() const { return caret != anchor; }
    std::string selectedText() const;

    void selectAll();
    // With `select` the anchor stays; without it the selection ends.
    void moveTo(size_t offset, bool select);
    void moveLeft(bool select);
    void moveRight(bool select);
    void moveHome(bool select) { moveTo(0, select); }
    void moveEnd(bool select) { moveTo(text.size(), select); }

    // Replace or remove the selection first. True when the text changed. insert leaves out control
    // characters and what exceeds the limit.
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
