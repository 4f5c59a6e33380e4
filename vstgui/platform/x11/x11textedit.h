// X11TextEdit: a text box that the toolkit draws over the frame.
#pragma once

#include "vstgui/platform/iplatformtextedit.h"
#include "vstgui/platform/x11/textline.h"
#include "vstgui/platform/x11/x11frame.h"
#include "vstgui/platform/x11/x11keys.h"

namespace VSTGUI {
namespace X11 {

class X11TextEdit : public IPlatformTextEdit {
public:
    // Opens with all text selected, and has the keyboard focus until it is destroyed.
    X11TextEdit(X11Frame& frame, IPlatformTextEditCallback* textEdit);

    UTF8StringPtr getText() override { return line.getText().c_str(); }
    bool setText(UTF8StringPtr newText) override;
    bool updateSize() override;

    // Frame coordinates.
    CRect getRect() const { return rect; }
    void draw(CDrawContext& context, const CRect& updateRect);

    // Input from the frame's window. `extend` extends the selection.
    void key(const KeyInput& input);
    void press(const CPoint& where, bool selectAll, bool extend);
    void drag(const CPoint& where);
    void paste(const std::string& text);
    // The keyboard went elsewhere.
    void end();

protected:
    ~X11TextEdit() override;

private:
    // True when the text changed.
    bool edit(const KeyInput& input);
    // Keys with Control. True when the text changed.
    bool editByShortcut(KeySym symbol);
    // True for the keys that end the editing.
    bool handleEndKey(const KeyInput& input);
    void changed(bool textChanged);
    CCoord widthUpTo(size_t offset) const;
    // The x of the text's left end. A text wider than the box is scrolled so that the caret shows.
    CCoord textStart() const;
    size_t offsetAt(CCoord x) const;

    SharedPointer<X11Frame> frame;
    std::string original;  // restored by Escape
    TextLine line;
    CRect rect;
};

}  // namespace X11
}  // namespace VSTGUI
