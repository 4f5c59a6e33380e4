// Win32OptionMenu: a popup menu of the system whose entries are drawn by their owner, the frame's
// window.
#include "vstgui/platform/win32/win32optionmenu.h"

#include "platform/win32/WideText.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/controls/coptionmenu.h"
#include "vstgui/platform/win32/win32frame.h"
#include "vstgui/platform/win32/win32surface.h"

#include <algorithm>
#include <cstdlib>

namespace VSTGUI {

namespace {

// Longer menus ignore the number of entries per column.
constexpr int32_t kMaxEntriesInColumns = 160;

// Doubles "&", which would mark the next letter as the entry's key.
std::wstring menuText(const std::string& title)
{
    std::wstring text;
    for (const wchar_t c : platform::toWide(title.c_str())) {
        text += c;
        if (c == L'&')
            text += c;
    }
    return text;
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

Win32Menu::Win32Menu(const COptionMenu& control)
    : entries(control), handle(CreatePopupMenu()),
      backBrush(CreateSolidBrush(RGB(entries.getBackColor().red, entries.getBackColor().green,
                                     entries.getBackColor().blue)))
{
    const auto count = static_cast<int32_t>(entries.get().size());
    const int32_t wanted = control.getNbItemsPerColumn();
    perColumn = wanted > 0 && count < kMaxEntriesInColumns ? wanted : std::max(count, 1);
    MENUINFO look{};
    look.cbSize = sizeof look;
    look.fMask = MIM_BACKGROUND;
    look.hbrBack = backBrush;
    SetMenuInfo(handle, &look);
    for (int32_t index = 0; index < count; ++index)
        append(index);
}

Win32Menu::~Win32Menu()
{
    DestroyMenu(handle);
    DeleteObject(backBrush);
}

// The text is not drawn by the system, but read by others, screen readers for example.
void Win32Menu::append(int32_t index)
{
    const MenuEntries::Entry& entry = entries.get()[static_cast<size_t>(index)];
    std::wstring text = menuText(entry.title);
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_DATA | MIIM_STRING;
    info.fType = MFT_OWNERDRAW;
    if (entry.separator)
        info.fType |= MFT_SEPARATOR;
    if (index > 0 && index % perColumn == 0)
        info.fType |= MFT_MENUBREAK;
    info.fState = (entry.checked ? MFS_CHECKED : 0u) | (entry.selectable ? 0u : MFS_DISABLED);
    info.wID = static_cast<UINT>(index) + 1;
    info.dwItemData = reinterpret_cast<ULONG_PTR>(this);
    info.dwTypeData = text.data();
    InsertMenuItemW(handle, static_cast<UINT>(index), TRUE, &info);
}

void Win32Menu::measure(MEASUREITEMSTRUCT& item)
{
    const auto& menu = *reinterpret_cast<const Win32Menu*>(item.itemData);
    const auto count = static_cast<int32_t>(menu.entries.get().size());
    const int32_t columns = (count + menu.perColumn - 1) / menu.perColumn;
    // The system adds the width of its check mark, and a few pixels between columns.
    const int room = GetSystemMetrics(SM_CXSCREEN) / columns - 2 * GetSystemMetrics(SM_CXMENUCHECK);
    const int width = static_cast<int>(menu.entries.getWidth());
    item.itemWidth =
        static_cast<UINT>(std::max(std::min(width - GetSystemMetrics(SM_CXMENUCHECK), room), 1));
    item.itemHeight = static_cast<UINT>(MenuEntries::kHeight);
}

void Win32Menu::draw(const DRAWITEMSTRUCT& item)
{
    const auto& menu = *reinterpret_cast<const Win32Menu*>(item.itemData);
    const RECT& at = item.rcItem;
    const RECT whole{0, 0, at.right - at.left, at.bottom - at.top};
    const auto surface = owned(IPlatformSurface::create(whole.right, whole.bottom));
    const size_t index = item.itemID - 1;
    if (!surface || index >= menu.entries.get().size())
        return;
    const auto context = owned(new CDrawContext(surface));
    menu.entries.draw(*context, CRect(0, 0, whole.right, whole.bottom), menu.entries.get()[index],
                      (item.itemState & ODS_SELECTED) != 0);
    POINT origin{};
    OffsetViewportOrgEx(item.hDC, at.left, at.top, &origin);
    static_cast<Win32Surface*>(static_cast<IPlatformSurface*>(surface))->copyTo(item.hDC, whole);
    SetViewportOrgEx(item.hDC, origin.x, origin.y, nullptr);
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

    const Win32Menu list(*menu);
    const UINT command = frame->trackMenu(list.getHandle(), where);
    PlatformOptionMenuResult result;
    if (command > 0) {
        result.menu = menu;
        result.index = static_cast<int32_t>(command) - 1;
    }
    return result;
}

}  // namespace VSTGUI
