// X11Frame: the frame's window, a child of the host's.
#pragma once

#include "vstgui/lib/cvstguitimer.h"
#include "vstgui/platform/iplatformframe.h"
#include "vstgui/platform/x11/cairosurface.h"
#include "vstgui/platform/x11/clickcounter.h"
#include "vstgui/platform/x11/windowpainter.h"
#include "vstgui/platform/x11/x11clipboard.h"
#include "vstgui/platform/x11/x11connection.h"

#include <memory>
#include <vector>

namespace VSTGUI {
namespace X11 {

class X11FileDialog;
class X11Message;
class X11OptionMenu;
class X11TextEdit;

class X11Frame : public IPlatformFrame, public X11Window {
public:
    // Null when the parent is no window, and without an X server.
    static X11Frame* create(IPlatformFrameCallback* callback, const CRect& size, Window parent,
                            IRunLoop& loop);

    X11Connection& getConnection() const { return *connection; }
    Window getWindow() const { return window; }
    // The host's window on the desktop.
    Window getTopLevelWindow() const;
    // False once the frame is closed or the host has destroyed the window.
    bool isAlive() const { return callback && !windowGone; }

    // The box gets the keys, and the mouse while inside it. Null for none; the keyboard focus then
    // returns to its previous owner.
    void setTextBox(X11TextEdit* box);
    X11TextEdit* getTextBox() const { return textBox; }
    // Of the text box. A text that is requested is passed to it later.
    void copyText(const std::string& text);
    void requestText();
    // The open menu, which is cancelled when the frame closes; null for none.
    void setMenu(X11OptionMenu* newMenu) { menu = newMenu; }
    // For menus, which have received the release.
    void forgetPressedButtons() { pressed = 0; }

    // Ends the file dialog with a message, since the desktop has none.
    void reportNoFileDialog(const FileDialogRequest& request);
    // A message with those buttons, which the frame must outlive.
    std::unique_ptr<X11Message> ask(const std::string& text, const std::string& caption,
                                    const std::vector<std::string>& labels);

    bool getGlobalPosition(CPoint& position) const override;
    bool setSize(const CRect& newSize) override;
    bool getSize(CRect& rect) const override;
    bool getCurrentMousePosition(CPoint& where) const override;
    bool getCurrentMouseButtons(CButtonState& buttons) const override;
    bool setMouseCursor(CCursorType type) override;
    bool invalidRect(const CRect& rect) override;
    void* getPlatformRepresentation() const override;
    IPlatformTextEdit* createPlatformTextEdit(IPlatformTextEditCallback* textEdit) override;
    IPlatformOptionMenu* createPlatformOptionMenu() override;
    bool runFileDialog(const FileDialogRequest& request, const FilesChosen& done) override;
    void cancelFileDialog() override;
    void showMessage(const std::string& text, const std::string& caption) override;
    void close() override;

protected:
    ~X11Frame() override;

private:
    X11Frame(IPlatformFrameCallback* callback, const CRect& size, IRunLoop& loop);
    bool openWindow(Window parent);

    void handleEvent(XEvent& event) override;
    void afterEvents() override;
    void inputMethodEnded() override { inputContext = nullptr; }
    void onButtonPress(XButtonEvent& event);
    void onButtonRelease(XButtonEvent& event);
    void onMotion(XMotionEvent& event);
    void onLeave(XCrossingEvent& event);
    void onWheel(XButtonEvent& event);
    void onKey(XKeyEvent& event);
    void onClipboard(XEvent& event);
    void onFocus(XFocusChangeEvent& event);
    void onXembed(XClientMessageEvent& event);
    void activate(bool state);
    void releaseMouse();
    bool hasKeyboard() const;
    void takeKeyboard();
    void giveKeyboardBack();
    void paint();
    void copyToWindow(const std::vector<CRect>& rects);
    XIC getInputContext();

    IPlatformFrameCallback* callback;  // null once closed
    SharedPointer<IRunLoop> loop;
    std::shared_ptr<X11Connection> connection;
    Window window{0};
    Window hostWindow{0};
    bool windowGone{false};
    CRect size;
    SharedPointer<CairoSurface> backBuffer;
    std::unique_ptr<WindowPainter> painter;
    std::vector<CRect> dirty;
    uint64_t lastPaint{0};  // ms of the steady clock
    SharedPointer<CVSTGUITimer> paintTimer;
    XIC inputContext{nullptr};
    std::unique_ptr<X11Clipboard> clipboard;
    Time inputTime{CurrentTime};  // of the last key or button
    X11TextEdit* textBox{nullptr};
    bool draggingInTextBox{false};
    Window keyboardBefore{0};          // had the keyboard focus before the text box
    int revertBefore{RevertToParent};  // its revert_to
    X11OptionMenu* menu{nullptr};
    SharedPointer<X11FileDialog> dialog;  // while it is open, there is no input
    std::unique_ptr<X11Message> message;  // the last one, open or closed
    ClickCounter clicks;
    int32_t pressed{0};  // buttons pressed in this window
};

}  // namespace X11
}  // namespace VSTGUI
