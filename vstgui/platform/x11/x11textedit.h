// X11TextEdit: a text box that the toolkit draws over its frame.
#pragma once

#include "vstgui/platform/iplatformtextedit.h"
#include "vstgui/platform/x11/textline.h"
#include "vstgui/platform/x11/x11frame.h"
#include "vstgui/platform/x11/x11keys.h"

namespace VSTGUI {
namespace X11 {

class X11TextEdit : public IPlatformTextEdit {
public:
    // Opens with everything selected, and has the keyboard until it ends.
    X11TextEdit(X11Frame& frame, IPlatformTextEditCallback* callback);

    UTF8StringPtr getText() override { return line.getText().c_str(); }
    bool setText(UTF8StringPtr text) override;
    bool updateSize() override;

    // Frame coordinates.
    CRect getRect() const { return rect; }
    void draw(CDrawContext& context, const CRect& updateRect);

    // What the frame's window got.
    void key(const KeyInput& input);
    void press(const CPoint& where, bool selectAll, bool extend);
    void drag(const CPoint& where);

protected:
    ~X11TextEdit() override;

private:
    bool edit(const KeyInput& input);
    bool ending(const KeyInput& input);
    void changed(bool textChanged);
    CCoord widthUpTo(size_t offset) const;
    // Left end of the text, so that the caret can be seen.
    CCoord textStart() const;
    size_t offsetAt(CCoord x) const;

    SharedPointer<X11Frame> frame;
    std::string original;
    TextLine line;
    CRect rect;
};

}  // namespace X11
}  // namespace VSTGUI
