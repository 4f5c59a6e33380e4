#include "vstgui/platform/win32/win32optionmenu.h"

#include "platform/win32/WideText.h"
#include "vstgui/lib/controls/coptionmenu.h"
#include "vstgui/platform/win32/win32frame.h"

#include <cstdlib>

namespace VSTGUI {

namespace {

// Longer menus ignore the number of entries per column.
constexpr int32_t kMaxEntriesInColumns = 160;

// Doubles "&", which would underline the next letter.
std::wstring menuText(UTF8StringPtr title)
{
    std::wstring text;
    for (const wchar_t c : platform::toWide(title)) {
        text += c;
        if (c == L'&')
            text += c;
    }
    return text;
}

UINT entryFlags(const COptionMenu& menu, int32_t index)
{
    const CMenuItem& item = *menu.getEntry(index);
    const int32_t perColumn = menu.getNbItemsPerColumn();
    const bool inColumns = perColumn > 0 && menu.getNbEntries() < kMaxEntriesInColumns;
    UINT flags = item.isSeparator() ? MF_SEPARATOR : MF_STRING;
    if (inColumns && index > 0 && index % perColumn == 0)
        flags |= MF_MENUBARBREAK;
    if (!item.isEnabled() || item.isTitle())
        flags |= MF_GRAYED;
    const bool current =
        (menu.getStyle() & kCheckStyle) != 0 && menu.getCurrentIndex(true) == index;
    if (current || item.isChecked())
        flags |= MF_CHECKED;
    return flags;
}

// A command is the entry's index plus 1.
HMENU buildMenu(const COptionMenu& menu)
{
    const HMENU handle = CreatePopupMenu();
    for (int32_t i = 0; i < menu.getNbEntries(); ++i)
        AppendMenuW(handle, entryFlags(menu, i), static_cast<UINT_PTR>(i) + 1,
                    menuText(menu.getEntry(i)->getTitle()).c_str());
    return handle;
}

// The press that opened the menu, until its release. One menu at a time.
struct OpeningPress {
    bool waiting;
    POINT where;
};
OpeningPress opening{};

bool isNear(const POINT& a, const POINT& b)
{
    return std::abs(a.x - b.x) <= GetSystemMetrics(SM_CXDRAG)
        && std::abs(a.y - b.y) <= GetSystemMetrics(SM_CYDRAG);
}

LRESULT CALLBACK menuFilter(int code, WPARAM wParam, LPARAM lParam)
{
    const auto& message = *reinterpret_cast<const MSG*>(lParam);
    const bool release = message.message == WM_LBUTTONUP || message.message == WM_RBUTTONUP;
    if (code == MSGF_MENU && release && opening.waiting) {
        opening.waiting = false;
        if (isNear(message.pt, opening.where))
            return 1;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

UINT trackMenuIgnoringOpeningClick(HMENU menu, const POINT& where, HWND owner)
{
    opening.waiting = GetKeyState(VK_LBUTTON) < 0 || GetKeyState(VK_RBUTTON) < 0;
    GetCursorPos(&opening.where);
    const HHOOK hook = SetWindowsHookExW(WH_MSGFILTER, menuFilter, nullptr, GetCurrentThreadId());
    const BOOL command = TrackPopupMenu(
        menu, TPM_LEFTALIGN | TPM_TOPALIGN | TPM_RIGHTBUTTON | TPM_RETURNCMD | TPM_NONOTIFY,
        where.x, where.y, 0, owner, nullptr);
    if (hook)
        UnhookWindowsHookEx(hook);
    return static_cast<UINT>(command);
}

Win32OptionMenu::Win32OptionMenu(Win32Frame* frame) : frame(frame) { }

Win32OptionMenu::~Win32OptionMenu() = default;

PlatformOptionMenuResult Win32OptionMenu::popup(COptionMenu* menu)
{
    const CBaseObjectGuard guard(this);
    const CBaseObjectGuard menuGuard(menu);
    const CRect& control = menu->getViewSize();
    CPoint where = menu->getStyle() & kPopupStyle ? control.getTopLeft() : control.getBottomLeft();
    menu->localToFrame(where);

    const HMENU handle = buildMenu(*menu);
    const UINT command = frame->trackMenu(handle, where);
    DestroyMenu(handle);
    PlatformOptionMenuResult result;
    if (command > 0) {
        result.menu = menu;
        result.index = static_cast<int32_t>(command) - 1;
    }
    return result;
}

}  // namespace VSTGUI
