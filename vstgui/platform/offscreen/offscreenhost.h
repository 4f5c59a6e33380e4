// OffscreenHost: stands for a host's window where there is no display. Pass it to CFrame::open (or
// to an editor) as the parent window; then deliver events, answer menus and dialogs, and take
// pictures.
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
    // A frame that is still open must be closed first; it is orphaned otherwise.
    ~OffscreenHost();
    OffscreenHost(const OffscreenHost&) = delete;
    OffscreenHost& operator=(const OffscreenHost&) = delete;

    void* parentWindow() { return this; }
    bool isOpen() const { return frame != nullptr; }

    // Input as a system would deliver it: presses carry all buttons that are down. Each also moves
    // the pointer that getCurrentMouseLocation reports. Without an open frame: not handled.
    CMouseEventResult mouseDown(CPoint where, CButtonState buttons = kLButton);
    CMouseEventResult mouseMove(CPoint where, CButtonState buttons = 0);
    CMouseEventResult mouseUp(CPoint where, CButtonState buttons = kLButton);
    CMouseEventResult mouseExit(CPoint where, CButtonState buttons = 0);
    void mouseCancel();
    // Notches, up and right positive.
    bool wheel(CPoint where, float distance, CButtonState modifiers = 0,
               CMouseWheelAxis axis = kMouseWheelAxisY);
    bool keyDown(VstKeyCode key);
    bool keyUp(VstKeyCode key);
    void activate(bool state);
    // Without an event.
    void setPointer(CPoint where, CButtonState buttons = 0);

    // What was asked to be repainted since the last paint.
    const std::vector<CRect>& invalidRects() const { return waiting; }
    void clearInvalidRects() { waiting.clear(); }
    // Repaints what waits and returns the whole picture; empty without an open frame.
    Pixels paint();
    // The size that the frame gave its window.
    CPoint frameSize() const;

    // The user's answers. Without a function everything is cancelled. A menu's answer is an entry's
    // index, or -1. A function may do anything, also close the frame.
    std::function<int32_t(COptionMenu& menu)> onMenu;
    std::function<std::vector<std::string>(const FileDialogRequest& request)> onFileDialog;
    // A message is shown, and closed when the function returns.
    std::function<void(const std::string& text, const std::string& caption)> onMessage;

    // The open text box: null text when there is none.
    UTF8StringPtr textBoxText() const;
    // As a user: replaces the text, or ends the editing. False without a box.
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
