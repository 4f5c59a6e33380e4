#include "editor/controls/win32/ZKRSystemBoxWin32.h"

#include "platform/win32/WideText.h"
#include "vstgui/platform/win32/win32textedit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <commctrl.h>
#include <cwchar>
#include <olectl.h>

namespace VSTGUI {

namespace {

constexpr UINT_PTR kSubclassId = 1;
constexpr int kMaxRead = 100;  // 16-bit characters
constexpr wchar_t kFamily[] = L"Arial";

COLORREF toWindows(const CColor& color)
{
    return RGB(color.red, color.green, color.blue);
}

DWORD alignmentStyle(CHoriTxtAlign align)
{
    return align == kLeftText ? ES_LEFT : align == kRightText ? ES_RIGHT : ES_CENTER;
}

HFONT createFont(const CFontDesc& field)
{
    LOGFONTW description{};
    description.lfHeight = -static_cast<LONG>(field.getSize());
    description.lfWeight = FW_NORMAL;
    description.lfCharSet = DEFAULT_CHARSET;
    std::copy(std::begin(kFamily), std::end(kFamily), description.lfFaceName);
    return CreateFontIndirectW(&description);
}

unsigned char heldModifiers()
{
    const auto held = [](int key, int modifier) { return GetKeyState(key) < 0 ? modifier : 0; };
    return static_cast<unsigned char>(held(VK_SHIFT, MODIFIER_SHIFT)
                                      | held(VK_MENU, MODIFIER_ALTERNATE)
                                      | held(VK_CONTROL, MODIFIER_CONTROL));
}

}  // namespace

ZKRSystemBoxWin32* ZKRSystemBoxWin32::create(HWND parent, IPlatformTextEditCallback* textEdit)
{
    if (!IsWindow(parent))
        return nullptr;
    auto* const box = new ZKRSystemBoxWin32(textEdit);
    if (box->open(parent))
        return box;
    box->forget();
    return nullptr;
}

ZKRSystemBoxWin32::ZKRSystemBoxWin32(IPlatformTextEditCallback* textEdit)
    : IPlatformTextEdit(textEdit), font(createFont(*textEdit->platformGetFont())),
      lineHeight(VSTGUI::lineHeight(font))
{
}

ZKRSystemBoxWin32::~ZKRSystemBoxWin32()
{
    if (window) {
        RemoveWindowSubclass(window, procedure, kSubclassId);
        keyboard.giveBack(window);
        DestroyWindow(window);
    }
    if (font)
        DeleteObject(font);
    if (background)
        DeleteObject(background);
}

bool ZKRSystemBoxWin32::open(HWND parent)
{
    const RECT at = place();
    const DWORD style = WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL
        | alignmentStyle(textEdit->platformGetHoriTxtAlign());
    const auto module = reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(parent, GWLP_HINSTANCE));
    window = CreateWindowExW(0, L"EDIT", nullptr, style, at.left, at.top, at.right - at.left,
                             at.bottom - at.top, parent, nullptr, module, nullptr);
    if (!window)
        return false;

    background = CreateSolidBrush(toWindows(textEdit->platformGetBackColor()));

    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    SendMessageW(window, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
    SendMessageW(window, EM_LIMITTEXT, static_cast<WPARAM>(textEdit->platformGetMaxCharacters()),
                 0);
    setText(textEdit->platformGetText());
    SendMessageW(window, EM_SETSEL, 0, -1);
    SetWindowSubclass(window, procedure, kSubclassId, reinterpret_cast<DWORD_PTR>(this));
    keyboard.take(window);
    return true;
}

RECT ZKRSystemBoxWin32::place() const
{
    CRect field = textEdit->platformGetSize();
    field.inset(textEdit->platformGetTextInset());
    // The window shows its text at its upper edge, so a higher one would show it too high.
    const LONG height = std::min(lineHeight, static_cast<LONG>(field.getHeight()));
    const LONG top = std::lround(field.getCenter().y - height / 2.0);
    return {static_cast<LONG>(field.left), top, static_cast<LONG>(field.right), top + height};
}

UTF8StringPtr ZKRSystemBoxWin32::getText()
{
    std::array<wchar_t, kMaxRead + 1> wide{};
    int length = window ? GetWindowTextW(window, wide.data(), static_cast<int>(wide.size())) : 0;
    // Half a surrogate pair is left out.
    if (length == kMaxRead && IS_HIGH_SURROGATE(wide[kMaxRead - 1]))
        --length;
    text = platform::fromWide(std::wstring(wide.data(), static_cast<size_t>(length)));
    return text.c_str();
}

bool ZKRSystemBoxWin32::setText(UTF8StringPtr newText)
{
    return window && SetWindowTextW(window, platform::toWide(newText ? newText : "").c_str());
}

bool ZKRSystemBoxWin32::updateSize()
{
    const RECT at = place();
    return window
        && SetWindowPos(window, nullptr, at.left, at.top, at.right - at.left, at.bottom - at.top,
                        SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT CALLBACK ZKRSystemBoxWin32::procedure(HWND /*window*/, UINT message, WPARAM wParam,
                                              LPARAM lParam, UINT_PTR /*id*/, DWORD_PTR data)
{
    auto* const box = reinterpret_cast<ZKRSystemBoxWin32*>(data);
    // Ending the edit releases the box.
    const CBaseObjectGuard guard(box);
    return box->handle(message, wParam, lParam);
}

LRESULT ZKRSystemBoxWin32::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    const HWND self = window;
    switch (message) {
    case WM_GETDLGCODE:
        // Else a dialog that contains the editor takes Return and Escape.
        return DefSubclassProc(self, message, wParam, lParam) | DLGC_WANTALLKEYS;
    case WM_KEYDOWN:
        if (handleKey(wParam))
            return 0;
        break;
    case WM_CHAR:
        // These were handled as WM_KEYDOWN; the window would beep. Control+Backspace gives 0x7F.
        if (wParam == VK_RETURN || wParam == VK_ESCAPE || wParam == VK_TAB || wParam == 0x7F)
            return 0;
        break;
    case WM_KILLFOCUS: {
        const LRESULT result = DefSubclassProc(self, message, wParam, lParam);
        textEdit->platformLooseFocus(false);
        return result;
    }
    case WM_DESTROY: {
        // The host destroyed the parent. The text can still be read here.
        textEdit->platformLooseFocus(false);
        const LRESULT result = DefSubclassProc(self, message, wParam, lParam);
        RemoveWindowSubclass(self, procedure, kSubclassId);
        window = nullptr;
        return result;
    }
    case OCM__BASE + WM_CTLCOLOREDIT:
        return chooseColors(reinterpret_cast<HDC>(wParam));
    case OCM__BASE + WM_COMMAND:
        if (HIWORD(wParam) == EN_CHANGE)
            textEdit->platformTextDidChange();
        return 0;
    default:
        break;
    }
    return DefSubclassProc(self, message, wParam, lParam);
}

bool ZKRSystemBoxWin32::handleKey(WPARAM virtualKey)
{
    const int32_t virt = virtualKey == VK_RETURN ? VKEY_RETURN
        : virtualKey == VK_ESCAPE                ? VKEY_ESCAPE
        : virtualKey == VK_TAB                   ? VKEY_TAB
                                                 : 0;
    if (virt == 0)
        return false;
    const VstKeyCode key{0, static_cast<unsigned char>(virt), heldModifiers()};
    if (textEdit->platformOnKeyDown(key))
        return true;
    if (virt == VKEY_ESCAPE)
        setText(textEdit->platformGetText());
    textEdit->platformLooseFocus(virt == VKEY_RETURN);
    return true;
}

LRESULT ZKRSystemBoxWin32::chooseColors(HDC device)
{
    SetTextColor(device, toWindows(textEdit->platformGetFontColor()));
    SetBkColor(device, toWindows(textEdit->platformGetBackColor()));
    return reinterpret_cast<LRESULT>(background);
}

}  // namespace VSTGUI
