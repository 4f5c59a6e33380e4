// COptionMenu: a press opens a list, and the index of the entry chosen becomes the value.
#pragma once

#include "vstgui/lib/controls/cmenuitem.h"
#include "vstgui/lib/controls/cparamdisplay.h"

#include <vector>

namespace VSTGUI {

class COptionMenu : public CParamDisplay {
public:
    COptionMenu(const CRect& size, IControlListener* listener, int32_t tag,
                CBitmap* background = nullptr, CBitmap* bgWhenClick = nullptr,
                const int32_t style = 0);
    COptionMenu(const COptionMenu& other);

    // Takes over the caller's reference. An index out of range appends.
    virtual CMenuItem* addEntry(CMenuItem* item, int32_t index = -1);
    // A title of exactly "-" makes a separator.
    virtual CMenuItem* addEntry(UTF8StringPtr title, int32_t index = -1,
                                int32_t flags = CMenuItem::kNoFlags);
    // Null when out of range.
    virtual CMenuItem* getEntry(int32_t index) const;
    virtual int32_t getNbEntries() const { return static_cast<int32_t>(entries.size()); }
    virtual bool removeEntry(int32_t index);
    virtual bool removeAllEntry();

    // Sets the current entry, not the value. False for no such entry and for separators. With
    // countSeparator false, the index counts the other entries only.
    virtual bool setCurrent(int32_t index, bool countSeparator = true);
    virtual CMenuItem* getCurrent() const { return getEntry(currentIndex); }
    // -1 for none.
    virtual int32_t getCurrentIndex(bool countSeparator = false) const;

    // Entries per column of the open list; 0 for one column.
    virtual void setNbItemsPerColumn(int32_t count) { itemsPerColumn = count; }
    int32_t getNbItemsPerColumn() const { return itemsPerColumn; }

    // Blocks until the list is closed. True when an entry was chosen. The control may be removed
    // and the frame closed meanwhile.
    virtual bool popup();
    // The index from the last popup; -1 when cancelled.
    int32_t getLastResult() const { return lastResult; }

    // Sets current entry and value; ignored when there is no such entry.
    void setValue(float newValue) override;
    void setMin(float) override { }
    float getMin() const override { return 0.f; }
    void setMax(float) override { }
    float getMax() const override { return static_cast<float>(getNbEntries() - 1); }
    void draw(CDrawContext* context) override;
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    int32_t onKeyDown(VstKeyCode& keyCode) override;
    bool removed(CView* parent) override;

    CLASS_METHODS(COptionMenu, CParamDisplay)

protected:
    ~COptionMenu() override;

private:
    std::vector<SharedPointer<CMenuItem>> entries;
    SharedPointer<CBitmap> bgWhenClick;
    int32_t currentIndex{-1};
    int32_t itemsPerColumn{-1};
    int32_t lastResult{-1};
    bool poppedUp{false};
};

}  // namespace VSTGUI
