// Win32TextEdit: creation and destruction of the window, its text and its rectangle.
#include "vstgui/platform/win32/win32textedit.h"

#include "platform/win32/WideText.h"
#include "vstgui/platform/win32/win32module.h"

#include <algorithm>
#include <cmath>
#include <commctrl.h>
#include <cwchar>

namespace VSTGUI {

int lineHeight(HFONT font)
{
    const HDC device = GetDC(nullptr);
    const HGDIOBJ before = SelectObject(device, font);
    TEXTMETRICW metrics{};
    GetTextMetricsW(device, &metrics);
    SelectObject(device, before);
    ReleaseDC(nullptr, device);
    return metrics.tmHeight;
}

namespace {

constexpr UINT_PTR kSubclass = 1;

COLORREF colorRef(const CColor& color)
{
    return RGB(color.red, color.green, color.blue);
}

DWORD alignment(CHoriTxtAlign align)
{
    switch (align) {
    case kCenterText:
        return ES_CENTER;
    case kRightText:
        return ES_RIGHT;
    default:
        return ES_LEFT;
    }
}

HFONT createFont(const CFontDesc& description)
{
    LOGFONTW wanted{};
    wanted.lfHeight = static_cast<LONG>(-std::lround(description.getSize()));
    wanted.lfWeight = description.getStyle() & kBoldFace ? FW_BOLD : FW_NORMAL;
    wanted.lfItalic = (description.getStyle() & kItalicFace) != 0;
    wanted.lfUnderline = (description.getStyle() & kUnderlineFace) != 0;
    wanted.lfStrikeOut = (description.getStyle() & kStrikethroughFace) != 0;
    wanted.lfCharSet = DEFAULT_CHARSET;
    wanted.lfQuality = CLEARTYPE_QUALITY;
    wanted.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    const std::wstring name = platform::toWide(description.getName());
    std::wcsncpy(wanted.lfFaceName, name.c_str(), LF_FACESIZE - 1);
    return CreateFontIndirectW(&wanted);
}

// Whether the unit is the second of a surrogate pair.
bool isSecondHalf(const std::wstring& wide, size_t index)
{
    return index > 0 && IS_SURROGATE_PAIR(wide[index - 1], wide[index]);
}

int32_t countCharacters(const std::wstring& wide)
{
    int32_t count = 0;
    for (size_t i = 0; i < wide.size(); ++i)
        count += !isSecondHalf(wide, i);
    return count;
}

}  // namespace

Win32TextEdit::Win32TextEdit(void* frameWindow, IPlatformTextEditCallback* textEdit)
    : IPlatformTextEdit(textEdit)
{
    const CFontRef description = textEdit->platformGetFont();
    font = createFont(*description);
    // Higher than the font, so that the caret does not touch the edge.
    fontHeight =
        std::max(static_cast<int>(std::lround(description->getSize())) + 3, lineHeight(font));
    backBrush = CreateSolidBrush(colorRef(textEdit->platformGetBackColor()));

    const UTF8StringPtr initial = textEdit->platformGetText();
    text = initial ? initial : "";
    const RECT where = place();
    window = CreateWindowExW(
        0, L"EDIT", platform::toWide(text).c_str(),
        WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL | alignment(textEdit->platformGetHoriTxtAlign()),
        where.left, where.top, where.right - where.left, where.bottom - where.top,
        static_cast<HWND>(frameWindow), nullptr, moduleHandle(), nullptr);
    if (!window)
        return;
    if (!SetWindowSubclass(window, procedure, kSubclass, reinterpret_cast<DWORD_PTR>(this))) {
        DestroyWindow(std::exchange(window, nullptr));
        return;
    }
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    SendMessageW(window, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
    SendMessageW(window, EM_SETSEL, 0, -1);
    keyboard.take(window);
}

Win32TextEdit::~Win32TextEdit()
{
    closeWindow();
    DeleteObject(font);
    DeleteObject(backBrush);
}

void Win32TextEdit::closeWindow()
{
    if (!window)
        return;
    const HWND closing = std::exchange(window, nullptr);
    // First, so that the following calls send no message to this object.
    RemoveWindowSubclass(closing, procedure, kSubclass);
    keyboard.giveBack(closing);
    DestroyWindow(closing);
}

bool Win32TextEdit::setText(UTF8StringPtr newText)
{
    if (!window)
        return false;
    text = newText ? newText : "";
    settingText = true;
    const BOOL done = SetWindowTextW(window, platform::toWide(text).c_str());
    settingText = false;
    return done != 0;
}

bool Win32TextEdit::updateSize()
{
    if (!window)
        return false;
    const RECT where = place();
    return SetWindowPos(window, nullptr, where.left, where.top, where.right - where.left,
                        where.bottom - where.top, SWP_NOZORDER | SWP_NOACTIVATE)
        != 0;
}

RECT Win32TextEdit::place() const
{
    CRect box = textEdit->platformGetSize();
    const CPoint inset = textEdit->platformGetTextInset();
    box.inset(inset.x, inset.y);
    if (box.getHeight() > fontHeight) {
        box.top = std::floor(box.getCenter().y - fontHeight / 2.);
        box.setHeight(fontHeight);
    }
    box.bound(textEdit->platformGetVisibleSize());
    return {static_cast<LONG>(box.left), static_cast<LONG>(box.top), static_cast<LONG>(box.right),
            static_cast<LONG>(box.bottom)};
}

void Win32TextEdit::onChange()
{
    std::wstring wide(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    wide.resize(
        static_cast<size_t>(GetWindowTextW(window, wide.data(), static_cast<int>(wide.size()))));
    const int32_t count = countCharacters(wide);
    // A text that was too long from the start may stay, and be shortened.
    const int32_t excess = std::min(count - textEdit->platformGetMaxCharacters(),
                                    count - countCharacters(platform::toWide(text)));
    if (excess > 0 && !settingText) {
        removeExcess(wide, excess);
        return;
    }
    text = platform::fromWide(wide);
    if (!settingText)
        textEdit->platformTextDidChange();
}

// Removes characters before the caret, the end of what was typed or pasted last. This sends another
// EN_CHANGE.
void Win32TextEdit::removeExcess(const std::wstring& wide, int32_t characters)
{
    DWORD caret = 0;
    SendMessageW(window, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&caret));
    DWORD start = std::min(caret, static_cast<DWORD>(wide.size()));
    caret = start;
    for (; characters > 0 && start > 0; --characters)
        start -= isSecondHalf(wide, start - 1) ? 2u : 1u;
    if (start == caret)
        return;
    SendMessageW(window, EM_SETSEL, start, static_cast<LPARAM>(caret));
    SendMessageW(window, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L""));
}

}  // namespace VSTGUI
