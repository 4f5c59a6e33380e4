// OffscreenHost: replaces a host's window where there is no display. Pass it to CFrame::open (or to
// an editor) as the parent window, then deliver events, answer menus and dialogs, and read the
// pixels.
#pragma once

#include "vstgui/platform/iplatformframe.h"
#include "vstgui/platform/pixels.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace VSTGUI {

class COptionMenu;
class OffscreenFrame;
class OffscreenTextEdit;

class OffscreenHost {
public:
    OffscreenHost();
    // Close the frame first; an open frame loses its host.
    ~OffscreenHost();
    OffscreenHost(const OffscreenHost&) = delete;
    OffscreenHost& operator=(const OffscreenHost&) = delete;

    void* parentWindow() { return this; }
    bool isOpen() const { return frame != nullptr; }

    // Input as a system delivers it: `buttons` are all buttons and modifiers held, including one
    // that is being released. The calls also set what getCurrentMouseLocation reports. Without an
    // open frame: not handled.
    CMouseEventResult mouseDown(CPoint where, CButtonState buttons = kLButton);
    CMouseEventResult mouseMove(CPoint where, CButtonState buttons = 0);
    CMouseEventResult mouseUp(CPoint where, CButtonState buttons = kLButton);
    CMouseEventResult mouseExit(CPoint where, CButtonState buttons = 0);
    void mouseCancel();
    // Distance in notches; up and right are positive.
    bool wheel(CPoint where, float distance, CButtonState modifiers = 0,
               CMouseWheelAxis axis = kMouseWheelAxisY);
    bool keyDown(VstKeyCode key);
    bool keyUp(VstKeyCode key);
    void activate(bool state);
    // Sends no event.
    void setPointer(CPoint where, CButtonState buttons = 0);

    // The repaint requests since the last paint.
    const std::vector<CRect>& invalidRects() const { return waiting; }
    void clearInvalidRects() { waiting.clear(); }
    // Repaints them. False without an open frame.
    bool repaint();
    // The same, and returns the whole picture; empty without an open frame.
    Pixels paint();
    // The window's size as the frame has set it; (0, 0) without an open frame.
    CPoint frameSize() const;

    // The user's answers; without a function everything is cancelled. A menu's answer is an entry's
    // index, or -1. A function may also close the frame.
    std::function<int32_t(COptionMenu& menu)> onMenu;
    std::function<std::vector<std::string>(const FileDialogRequest& request)> onFileDialog;
    // Called for each message; it counts as closed when the function returns.
    std::function<void(const std::string& text, const std::string& caption)> onMessage;

    // The open text box's text; null without one.
    UTF8StringPtr textBoxText() const;
    // Replaces the text or ends the editing as a user would. False without a box.
    bool typeText(UTF8StringPtr text);
    bool pressReturnInTextBox();
    bool pressEscapeInTextBox();

private:
    friend class OffscreenFrame;
    friend class OffscreenTextEdit;

    OffscreenFrame* frame{nullptr};
    OffscreenTextEdit* textBox{nullptr};
    std::vector<CRect> waiting;
    CPoint pointer;
    CButtonState pointerButtons;
};

}  // namespace VSTGUI
