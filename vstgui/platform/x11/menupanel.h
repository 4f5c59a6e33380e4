// MenuPanel: the layout and the look of an open menu.
#pragma once

#include "vstgui/lib/crect.h"

#include <string>
#include <vector>

namespace VSTGUI {

class CDrawContext;
class COptionMenu;

namespace X11 {

class MenuPanel {
public:
    // Columns as the menu wants them, or as the height (pixels) demands.
    MenuPanel(const COptionMenu& menu, CCoord mostHeight);

    CPoint getSize() const { return size; }
    // The entry that can be chosen there; -1 for none.
    int32_t entryAt(const CPoint& where) const;
    // The next one to choose from there, going that way; the same when there is none. From -1 the
    // first or last.
    int32_t neighbour(int32_t entry, int32_t direction) const;
    // The one beside it, a column further; the same when there is none.
    int32_t beside(int32_t entry, int32_t columns) const;
    int32_t getCurrent() const { return current; }

    void draw(CDrawContext& context, int32_t highlighted) const;

private:
    struct Entry {
        std::string title;
        CRect rect;
        bool separator;
        bool selectable;
        bool checked;
    };

    bool isSelectable(int32_t entry) const;

    std::vector<Entry> entries;
    int32_t rows{1};
    int32_t current{-1};
    CPoint size;
};

}  // namespace X11
}  // namespace VSTGUI
