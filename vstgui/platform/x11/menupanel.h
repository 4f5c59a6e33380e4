// MenuPanel: lays out and draws an open menu.
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
    // With the menu's number of entries per column, or fewer if maxHeight (pixels) requires it.
    MenuPanel(const COptionMenu& menu, CCoord maxHeight);

    CPoint getSize() const { return size; }
    // The selectable entry at that point; -1 for none.
    int32_t entryAt(const CPoint& where) const;
    // The next selectable entry in that direction (1 or -1), or `entry` if there is none. From -1
    // the first or the last one.
    int32_t neighbour(int32_t entry, int32_t direction) const;
    // The entry in the same row that many columns to the right, or `entry` if none is selectable.
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
