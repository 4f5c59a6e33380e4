// MenuEntries: the entries of an open menu, and how each is drawn.
#pragma once

#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/cfont.h"
#include "vstgui/lib/crect.h"

#include <string>
#include <vector>

namespace VSTGUI {

class CDrawContext;
class COptionMenu;

class MenuEntries {
public:
    struct Entry {
        std::string title;
        bool separator;
        bool selectable;
        bool checked;
    };

    // Copies the menu's entries; they are drawn in its font and colours.
    explicit MenuEntries(const COptionMenu& menu);

    static constexpr CCoord kHeight = 20.;  // pixels, of each entry

    const std::vector<Entry>& get() const { return entries; }
    // Of the widest entry, in pixels.
    CCoord getWidth() const;
    CColor getBackColor() const { return backColor; }
    CColor getFrameColor() const { return frameColor; }

    // Highlighted, the entry has the colours of text and background exchanged. A title that is too
    // wide ends in an ellipsis.
    void draw(CDrawContext& context, const CRect& rect, const Entry& entry, bool highlighted) const;

private:
    std::vector<Entry> entries;
    SharedPointer<CFontDesc> font;
    CColor fontColor;
    CColor dimmedColor;  // of separators and of entries that cannot be chosen
    CColor backColor;
    CColor frameColor;
};

}  // namespace VSTGUI
