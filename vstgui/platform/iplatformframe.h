// IPlatformFrame: a frame's window; IPlatformFrameCallback: what the window calls in the frame.
#pragma once

#include "vstgui/lib/cbuttonstate.h"
#include "vstgui/lib/cdrawdefs.h"
#include "vstgui/lib/crect.h"
#include "vstgui/lib/vstkeycode.h"
#include "vstgui/platform/filedialog.h"

namespace VSTGUI {

class CDrawContext;
class IPlatformOptionMenu;
class IPlatformTextEdit;
class IPlatformTextEditCallback;

// The caller of each of these holds a reference to the IPlatformFrame, since any call may close it.
class IPlatformFrameCallback {
public:
    virtual ~IPlatformFrameCallback() = default;

    // Paints that part, opaque. The context's surface is as large as the frame.
    virtual bool platformDrawRect(CDrawContext* context, const CRect& rect) = 0;
    // In frame coordinates; outside the frame only while the mouse is captured. The window captures
    // the mouse if platformOnMouseDown returns kMouseEventHandled, until any button is released.
    virtual CMouseEventResult platformOnMouseDown(CPoint& where, const CButtonState& buttons) = 0;
    virtual CMouseEventResult platformOnMouseMoved(CPoint& where, const CButtonState& buttons) = 0;
    virtual CMouseEventResult platformOnMouseUp(CPoint& where, const CButtonState& buttons) = 0;
    virtual CMouseEventResult platformOnMouseExited(CPoint& where, const CButtonState& buttons) = 0;
    // The capture was lost or the window destroyed: there will be no release.
    virtual void platformOnMouseCancel() = 0;
    // `distance` in notches: up is positive, and along X left is positive, as on Windows. `buttons`
    // has modifiers only.
    virtual bool platformOnMouseWheel(const CPoint& where, const CMouseWheelAxis& axis,
                                      const float& distance, const CButtonState& buttons) = 0;
    // True when the key was used.
    virtual bool platformOnKeyDown(VstKeyCode& keyCode) = 0;
    virtual bool platformOnKeyUp(VstKeyCode& keyCode) = 0;
    virtual void platformOnActivate(bool state) = 0;
};

// Base class of a platform's own settings for opening the window, such as X11::FrameConfig.
class IPlatformFrameConfig {
public:
    virtual ~IPlatformFrameConfig() = default;
};

class IPlatformFrame : public CBaseObject {
public:
    virtual bool getGlobalPosition(CPoint& position) const = 0;
    virtual bool setSize(const CRect& newSize) = 0;
    virtual bool getSize(CRect& rect) const = 0;
    // The current state, in frame coordinates; buttons and modifiers are added to `buttons`.
    virtual bool getCurrentMousePosition(CPoint& where) const = 0;
    virtual bool getCurrentMouseButtons(CButtonState& buttons) const = 0;
    virtual bool setMouseCursor(CCursorType type) = 0;
    // Extended to whole pixels; painted later.
    virtual bool invalidRect(const CRect& rect) = 0;
    // The window: an HWND on Windows, the window's id with X11.
    virtual void* getPlatformRepresentation() const = 0;

    // The caller owns them; null when the system has none or the window is gone.
    virtual IPlatformTextEdit* createPlatformTextEdit(IPlatformTextEditCallback* textEdit) = 0;
    virtual IPlatformOptionMenu* createPlatformOptionMenu() = 0;
    // Calls `done` when the user has ended the dialog, unless the frame closes first. On Windows
    // blocks until then, with timers running, and returns whether something was chosen; on X11
    // returns at once whether a dialog opens. False while another one is open.
    virtual bool runFileDialog(const FileDialogRequest& request, const FilesChosen& done) = 0;
    virtual void cancelFileDialog() = 0;
    // Shows a text, its lines separated by line feeds, in a window with a button to close it. The
    // window also closes with the frame. Returns at once on X11, and when it is closed on Windows.
    virtual void showMessage(const std::string& text, const std::string& caption) = 0;

    // Called when the frame closes: makes no callback from now on, ends menu, dialog, text box and
    // capture, and destroys the window.
    virtual void close() = 0;

    // Milliseconds of a monotonic clock. Implemented by each platform.
    static uint32_t getTicks();

    // A window of the system's: a visible child at (0, 0) of the parent. Null when that fails. The
    // caller owns it. Implemented by each platform.
    static IPlatformFrame* createNative(IPlatformFrameCallback* callback, const CRect& size,
                                        void* parent, PlatformType type,
                                        IPlatformFrameConfig* config);

    // Calls the factory, by default createNative.
    static IPlatformFrame* createPlatformFrame(IPlatformFrameCallback* callback, const CRect& size,
                                               void* parent, PlatformType type,
                                               IPlatformFrameConfig* config);
    using Factory = decltype(&createNative);
    // For frames opened from now on. Not null.
    static void setFactory(Factory factory);
};

}  // namespace VSTGUI
