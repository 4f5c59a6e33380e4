// Win32Frame: the frame's window, a child of the host's.
#pragma once

#include "vstgui/platform/iplatformframe.h"
#include "vstgui/platform/win32/win32surface.h"
#include "vstgui/platform/win32/win32windowclass.h"

namespace VSTGUI {

class Win32FileDialog;

class Win32Frame : public IPlatformFrame {
public:
    // Null when the parent is no window.
    static Win32Frame* create(IPlatformFrameCallback* callback, const CRect& size, HWND parent);

    bool getGlobalPosition(CPoint& position) const override;
    bool setSize(const CRect& newSize) override;
    bool getSize(CRect& rect) const override;
    bool getCurrentMousePosition(CPoint& where) const override;
    bool getCurrentMouseButtons(CButtonState& buttons) const override;
    bool setMouseCursor(CCursorType type) override;
    bool invalidRect(const CRect& rect) override;
    void* getPlatformRepresentation() const override { return window; }
    IPlatformTextEdit* createPlatformTextEdit(IPlatformTextEditCallback* textEdit) override;
    IPlatformOptionMenu* createPlatformOptionMenu() override;
    bool runFileDialog(const FileDialogRequest& request, const FilesChosen& done) override;
    void cancelFileDialog() override;
    void showMessage(const std::string& text, const std::string& caption) override;
    void close() override;

    // Opens the menu at that point of the frame. Returns the command chosen; 0 when cancelled or
    // when the window was destroyed.
    UINT trackMenu(HMENU menu, const CPoint& where);

private:
    explicit Win32Frame(IPlatformFrameCallback* callback);
    ~Win32Frame() override;

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT passOn(UINT message, WPARAM wParam, LPARAM lParam) const;
    void paint();
    bool handleMenuEntry(UINT message, LPARAM lParam) const;
    void onFocus(bool gained);
    bool isOurs(HWND other) const;
    void endModalLoops();
    void onDestroy();

    bool handleMouse(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    void press(int32_t button, CPoint where, CButtonState buttons);
    void release(CPoint where, CButtonState buttons);
    void move(CPoint where, CButtonState buttons);
    bool wheel(UINT message, WPARAM wParam, LPARAM lParam);
    void loseCapture();
    void watchForLeave();

    GdiplusSession session;
    Win32WindowClass windowClass;
    IPlatformFrameCallback* callback;  // null when closed
    HWND window{nullptr};              // null when closed, or destroyed by the host
    SharedPointer<Win32Surface> surface;
    Win32FileDialog* fileDialog{nullptr};  // while one is shown
    int menus{0};                          // number of open menus
    bool active{false};
    bool capturing{false};
    bool painting{false};
    bool watchingForLeave{false};
};

}  // namespace VSTGUI
