// Win32TextEdit: messages for the keys that end it, focus, changes and colours.
#include "vstgui/platform/win32/win32keys.h"
#include "vstgui/platform/win32/win32textedit.h"

#include <commctrl.h>
#include <olectl.h>

namespace VSTGUI {

LRESULT CALLBACK Win32TextEdit::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                          UINT_PTR id, DWORD_PTR object)
{
    auto* const box = reinterpret_cast<Win32TextEdit*>(object);
    // A handler may end the editing, which releases the box.
    const CBaseObjectGuard guard(box);
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, procedure, id);
        box->window = nullptr;
        return DefSubclassProc(window, message, wParam, lParam);
    }
    return box->window ? box->handle(message, wParam, lParam)
                       : DefSubclassProc(window, message, wParam, lParam);
}

LRESULT Win32TextEdit::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case OCM_COMMAND:
        if (HIWORD(wParam) == EN_CHANGE)
            onChange();
        return 0;
    case OCM_CTLCOLOREDIT:
        return setColors(reinterpret_cast<HDC>(wParam));
    case WM_GETDLGCODE:
        // Else a dialog of the host's takes Return, Escape and Tab.
        return DefSubclassProc(window, message, wParam, lParam) | DLGC_WANTALLKEYS;
    case WM_KEYDOWN:
        if (onKey(wParam))
            return 0;
        break;
    case WM_CHAR:
        // A one-line box beeps at these.
        if (wParam == L'\r' || wParam == L'\n' || wParam == L'\t' || wParam == VK_ESCAPE)
            return 0;
        break;
    case WM_KILLFOCUS:
        onFocusLost(reinterpret_cast<HWND>(wParam));
        return 0;
    case kEndSilently:
        closeWindow();
        return 0;
    default:
        break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

bool Win32TextEdit::onKey(WPARAM virtualKey)
{
    if (virtualKey != VK_RETURN && virtualKey != VK_ESCAPE && virtualKey != VK_TAB)
        return false;
    if (!textEdit->platformOnKeyDown(keyCodeFrom(virtualKey)) && window && virtualKey != VK_TAB)
        textEdit->platformLooseFocus(virtualKey == VK_RETURN);
    return true;
}

void Win32TextEdit::onFocusLost(HWND gaining)
{
    const HWND frameWindow = GetParent(window);
    DefSubclassProc(window, WM_KILLFOCUS, reinterpret_cast<WPARAM>(gaining), 0);
    if (window)
        textEdit->platformLooseFocus(false);
    // The focus may have left the frame's window together with the box; it gets no message itself.
    if (IsWindow(frameWindow))
        SendMessageW(frameWindow, WM_KILLFOCUS, reinterpret_cast<WPARAM>(gaining), 0);
}

LRESULT Win32TextEdit::setColors(HDC device) const
{
    const CColor fore = textEdit->platformGetFontColor();
    const CColor back = textEdit->platformGetBackColor();
    SetTextColor(device, RGB(fore.red, fore.green, fore.blue));
    SetBkColor(device, RGB(back.red, back.green, back.blue));
    return reinterpret_cast<LRESULT>(backBrush);
}

}  // namespace VSTGUI
