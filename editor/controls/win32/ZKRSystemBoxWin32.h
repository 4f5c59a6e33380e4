// ZKRSystemBoxWin32: the text box of a CZKRTextEdit on Windows, a child window of class "EDIT" on
// the frame's window.
#pragma once

#include "vstgui/lib/platform/iplatformtextedit.h"
#include "vstgui/platform/win32/win32keyboardfocus.h"

#include <string>
#include <windows.h>

namespace VSTGUI {

class ZKRSystemBoxWin32 : public IPlatformTextEdit {
public:
    // Null when the parent is no window or the child cannot be made. The caller owns the box.
    static ZKRSystemBoxWin32* create(HWND parent, IPlatformTextEditCallback* textEdit);

    // UTF-8, at most the first 100 16-bit characters; empty without a window.
    UTF8StringPtr getText() override;
    bool setText(UTF8StringPtr newText) override;
    bool updateSize() override;

private:
    explicit ZKRSystemBoxWin32(IPlatformTextEditCallback* textEdit);
    ~ZKRSystemBoxWin32() override;

    bool open(HWND parent);
    // The box's rectangle in the parent, pixels: as high as a line, vertically centred in the
    // field.
    RECT place() const;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    // True when the key was handled and must not reach the window.
    bool handleKey(WPARAM virtualKey);
    LRESULT chooseColors(HDC device);

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR data);

    HWND window{nullptr};  // null before open and after WM_DESTROY
    Win32KeyboardFocus keyboard;
    HFONT font;
    LONG lineHeight;  // pixels
    HBRUSH background{nullptr};
    std::string text;  // the last result of getText
};

}  // namespace VSTGUI
