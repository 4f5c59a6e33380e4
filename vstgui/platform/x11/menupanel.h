// MenuPanel: lays out and draws an open menu.
#pragma once

#include "vstgui/platform/menuentries.h"

namespace VSTGUI {
namespace X11 {

class MenuPanel {
public:
    // With the menu's number of entries per column, or fewer if the largest size (pixels) requires
    // it. Columns that would be too wide together are narrowed.
    MenuPanel(const COptionMenu& menu, const CPoint& maxSize);

    CPoint getSize() const { return size; }
    // The selectable entry at that point; -1 for none.
    int32_t entryAt(const CPoint& where) const;
    // The next selectable entry in that direction (1 or -1), or `entry` if there is none. From -1
    // the first or the last one.
    int32_t neighbour(int32_t entry, int32_t direction) const;
    // The entry in the same row, one column to the right (1) or left (-1), or `entry` if none is
    // selectable there. From -1 the first or the last one.
    int32_t beside(int32_t entry, int32_t direction) const;
    int32_t getCurrent() const { return current; }

    void draw(CDrawContext& context, int32_t highlighted) const;

private:
    int32_t count() const { return static_cast<int32_t>(entries.get().size()); }
    CRect rectOf(int32_t entry) const;
    bool isSelectable(int32_t entry) const;

    MenuEntries entries;
    int32_t rows;
    int32_t current;
    CCoord columnWidth;
    CPoint size;
};

}  // namespace X11
}  // namespace VSTGUI
