// Win32TextEdit: the system's text box (window class "EDIT") over a text control.
#pragma once

#include "vstgui/platform/iplatformtextedit.h"
#include "vstgui/platform/win32/win32keyboardfocus.h"

#include <string>
#include <windows.h>

namespace VSTGUI {

// Of a line of text, in pixels.
int lineHeight(HFONT font);

class Win32TextEdit : public IPlatformTextEdit {
public:
    // A child of the frame's window, which reflects its notifications. Opens with all text selected
    // and takes the keyboard focus until it closes.
    Win32TextEdit(void* frameWindow, IPlatformTextEditCallback* textEdit);

    // False when the window could not be created or is destroyed.
    bool isOpen() const { return window != nullptr; }

    UTF8StringPtr getText() override { return text.c_str(); }
    bool setText(UTF8StringPtr newText) override;
    bool updateSize() override;

    // A message that closes the box without a callback to the control.
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
    void removeExcess(const std::wstring& wide, int32_t characters);
    bool onKey(WPARAM virtualKey);
    void onFocusLost(HWND gaining);
    LRESULT setColors(HDC device) const;
    void closeWindow();

    HWND window{nullptr};
    Win32KeyboardFocus keyboard;
    HFONT font{nullptr};
    HBRUSH backBrush{nullptr};
    int fontHeight{0};
    std::string text;  // UTF-8, as in the box
    bool settingText{false};
};

}  // namespace VSTGUI
