// ZKRSystemBoxWin32: the text box that Windows gives a CZKRTextEdit, a child window of class "EDIT"
// on the frame's window.
#pragma once

#include "vstgui/lib/platform/iplatformtextedit.h"
#include "vstgui/platform/win32/win32keyboardloan.h"

#include <string>
#include <windows.h>

namespace VSTGUI {

class ZKRSystemBoxWin32 : public IPlatformTextEdit {
public:
    // Null when the parent is no window, or gives no child. The caller owns it.
    static ZKRSystemBoxWin32* create(HWND parent, IPlatformTextEditCallback* textEdit);

    // UTF-8, at most the first 100 16-bit characters; empty without a window.
    UTF8StringPtr getText() override;
    bool setText(UTF8StringPtr newText) override;
    bool updateSize() override;

private:
    explicit ZKRSystemBoxWin32(IPlatformTextEditCallback* textEdit);
    ~ZKRSystemBoxWin32() override;

    bool open(HWND parent);
    // Where the window stands, in pixels of its parent: as high as a line, in the field's middle.
    RECT place() const;
    LONG fontHeight() const;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    // True when the key is not the window's business.
    bool handleKey(WPARAM virtualKey);
    LRESULT chooseColors(HDC device);

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR box);

    HWND window{nullptr};  // null when there is none, or no longer
    Win32KeyboardLoan keyboard;
    HFONT font{nullptr};
    HBRUSH paper{nullptr};
    std::string text;  // what getText gave last
};

}  // namespace VSTGUI
