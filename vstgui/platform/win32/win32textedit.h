// Win32TextEdit: a text box of the system on top of a text control.
#pragma once

#include "vstgui/platform/iplatformtextedit.h"
#include "vstgui/platform/win32/win32keyboardloan.h"

#include <string>
#include <windows.h>

namespace VSTGUI {

class Win32TextEdit : public IPlatformTextEdit {
public:
    // Inside the window of a frame, which sends its notifications back; opens with all text
    // selected and takes the keyboard until it ends.
    Win32TextEdit(void* frameWindow, IPlatformTextEditCallback* callback);

    // False when the window could not be made, or is gone.
    bool isOpen() const { return window != nullptr; }

    UTF8StringPtr getText() override { return text.c_str(); }
    bool setText(UTF8StringPtr newText) override;
    bool updateSize() override;

    // A message that ends the box without a word to the control.
    static constexpr UINT kEndSilently = WM_APP;

protected:
    ~Win32TextEdit() override;

    HWND getWindow() const { return window; }

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR object);
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    RECT place() const;
    void onChange();
    void takeBack(const std::wstring& wide, int32_t characters);
    bool onKey(WPARAM virtualKey);
    void onFocusLost(HWND gaining);
    LRESULT setColors(HDC device) const;
    void closeWindow();

    HWND window{nullptr};
    Win32KeyboardLoan keyboard;
    HFONT font{nullptr};
    HBRUSH backBrush{nullptr};
    int fontHeight{0};
    std::string text;  // UTF-8, as in the box
    bool settingText{false};
};

}  // namespace VSTGUI
