#include "vstgui/lib/controls/coptionmenu.h"

#include "vstgui/lib/cbitmap.h"
#include "vstgui/lib/cframe.h"
#include "vstgui/platform/iplatformoptionmenu.h"

#include <algorithm>

namespace VSTGUI {

COptionMenu::COptionMenu(const CRect& size, IControlListener* listener, int32_t tag,
                         CBitmap* background, CBitmap* bgWhenClick, const int32_t style)
    : CParamDisplay(size, background, style), bgWhenClick(bgWhenClick)
{
    this->listener = listener;
    this->tag = tag;
    setWantsFocus(true);
    if (style & VSTGUI::kNoDrawStyle)
        setDirty(false);
}

COptionMenu::COptionMenu(const COptionMenu& other)
    : CParamDisplay(other), bgWhenClick(other.bgWhenClick), currentIndex(other.currentIndex),
      itemsPerColumn(other.itemsPerColumn)
{
    for (const CMenuItem* entry : other.entries)
        entries.push_back(owned(new CMenuItem(*entry)));
}

COptionMenu::~COptionMenu() = default;

CMenuItem* COptionMenu::addEntry(CMenuItem* item, int32_t index)
{
    if (!item)
        return nullptr;
    const bool inside = index >= 0 && index < getNbEntries();
    entries.insert(inside ? entries.begin() + index : entries.end(), owned(item));
    return item;
}

CMenuItem* COptionMenu::addEntry(UTF8StringPtr title, int32_t index, int32_t flags)
{
    auto* item = new CMenuItem(title, flags);
    if (sameText(title, "-"))
        item->setIsSeparator();
    return addEntry(item, index);
}

CMenuItem* COptionMenu::getEntry(int32_t index) const
{
    return index >= 0 && index < getNbEntries() ? entries[static_cast<size_t>(index)] : nullptr;
}

bool COptionMenu::removeEntry(int32_t index)
{
    if (!getEntry(index))
        return false;
    entries.erase(entries.begin() + index);
    currentIndex = std::min(currentIndex, getNbEntries() - 1);
    return true;
}

bool COptionMenu::removeAllEntry()
{
    entries.clear();
    currentIndex = -1;
    return true;
}

bool COptionMenu::setCurrent(int32_t index, bool countSeparator)
{
    if (!countSeparator) {
        int32_t others = -1;
        int32_t i = 0;
        for (; i < getNbEntries(); ++i) {
            if (!getEntry(i)->isSeparator() && ++others == index)
                break;
        }
        index = i;
    }
    const CMenuItem* entry = getEntry(index);
    if (!entry || entry->isSeparator())
        return false;
    currentIndex = index;
    setDirty();
    return true;
}

int32_t COptionMenu::getCurrentIndex(bool countSeparator) const
{
    if (countSeparator || currentIndex < 0)
        return currentIndex;
    const auto last = entries.begin() + std::min(currentIndex + 1, getNbEntries());
    const auto separators =
        std::count_if(entries.begin(), last, [](CMenuItem* entry) { return entry->isSeparator(); });
    return currentIndex - static_cast<int32_t>(separators);
}

bool COptionMenu::popup()
{
    CFrame* frame = getFrame();
    if (!frame || !frame->getPlatformFrame() || poppedUp)
        return false;
    const CBaseObjectGuard guard(this);
    const CBaseObjectGuard frameGuard(frame);
    lastResult = -1;
    const auto list = owned(frame->getPlatformFrame()->createPlatformOptionMenu());
    if (!list)
        return false;

    beginEdit();
    poppedUp = true;
    if (bgWhenClick)
        invalid();
    frame->onStartLocalEventLoop();
    const PlatformOptionMenuResult result = list->popup(this);
    poppedUp = false;
    if (bgWhenClick)
        invalid();
    // If the control was removed meanwhile, its gesture has ended.
    const bool chosen = result.menu && isAttached() && getEntry(result.index);
    if (chosen) {
        lastResult = result.index;
        setValue(static_cast<float>(result.index));
        valueChanged();
        invalid();
    }
    if (isEditing())
        endEdit();
    return chosen;
}

bool COptionMenu::removed(CView* parent)
{
    if (poppedUp && isEditing())
        endEdit();
    return CParamDisplay::removed(parent);
}

void COptionMenu::setValue(float newValue)
{
    const auto index = static_cast<int32_t>(newValue);
    if (newValue < 0.f || !getEntry(index))
        return;
    currentIndex = index;
    CParamDisplay::setValue(newValue);
    setDirty();
}

void COptionMenu::draw(CDrawContext* context)
{
    drawBack(context, poppedUp ? static_cast<CBitmap*>(bgWhenClick) : nullptr);
    if (const CMenuItem* entry = getCurrent())
        drawPlatformText(context, entry->getTitle());
    setDirty(false);
}

CMouseEventResult COptionMenu::onMouseDown(CPoint&, const CButtonState& buttons)
{
    if (!getFrame() || (buttons & (kLButton | kRButton | kApple)) == 0)
        return kMouseEventNotHandled;
    if (wantsFocus())
        getFrame()->setFocusView(this);
    popup();
    return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

int32_t COptionMenu::onKeyDown(VstKeyCode& keyCode)
{
    if (keyCode.modifier != 0 || keyCode.character != 0)
        return -1;
    if (keyCode.virt == VKEY_RETURN) {
        popup();
        return 1;
    }
    const int32_t step = keyCode.virt == VKEY_UP ? -1 : keyCode.virt == VKEY_DOWN ? 1 : 0;
    if (step == 0)
        return -1;
    int32_t next = currentIndex + step;
    while (getEntry(next) && getEntry(next)->isSeparator())
        next += step;
    if (getEntry(next)) {
        beginEdit();
        lastResult = next;
        setValue(static_cast<float>(next));
        valueChanged();
        endEdit();
    }
    return 1;
}

}  // namespace VSTGUI
