// IPlatformFrame: the window of a frame; IPlatformFrameCallback: the frame as its window sees it.
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

// Whoever calls one of these keeps the IPlatformFrame alive meanwhile: any of them can close it.
class IPlatformFrameCallback {
public:
    virtual ~IPlatformFrameCallback() = default;

    // Paints that part; the context's surface is as large as the frame. Opaque everywhere.
    virtual bool platformDrawRect(CDrawContext* context, const CRect& rect) = 0;
    // Frame coordinates, also outside the frame while the mouse is captured. Capture after exactly
    // kMouseEventHandled, until any button goes up.
    virtual CMouseEventResult platformOnMouseDown(CPoint& where, const CButtonState& buttons) = 0;
    virtual CMouseEventResult platformOnMouseMoved(CPoint& where, const CButtonState& buttons) = 0;
    virtual CMouseEventResult platformOnMouseUp(CPoint& where, const CButtonState& buttons) = 0;
    virtual CMouseEventResult platformOnMouseExited(CPoint& where, const CButtonState& buttons) = 0;
    // The capture was lost to somebody else, or the window went away: there will be no release.
    virtual void platformOnMouseCancel() = 0;
    // Notches, up positive; along X as Windows has it: left positive. Modifiers only.
    virtual bool platformOnMouseWheel(const CPoint& where, const CMouseWheelAxis& axis,
                                      const float& distance, const CButtonState& buttons) = 0;
    // True when used.
    virtual bool platformOnKeyDown(VstKeyCode& keyCode) = 0;
    virtual bool platformOnKeyUp(VstKeyCode& keyCode) = 0;
    virtual void platformOnActivate(bool state) = 0;
};

// What a platform may need to know beyond the window it opens in.
class IPlatformFrameConfig {
public:
    virtual ~IPlatformFrameConfig() = default;
};

class IPlatformFrame : public CBaseObject {
public:
    virtual bool getGlobalPosition(CPoint& position) const = 0;
    virtual bool setSize(const CRect& size) = 0;
    virtual bool getSize(CRect& size) const = 0;
    // As they are now, in frame coordinates; buttons and modifiers are added to the word.
    virtual bool getCurrentMousePosition(CPoint& where) const = 0;
    virtual bool getCurrentMouseButtons(CButtonState& buttons) const = 0;
    virtual bool setMouseCursor(CCursorType type) = 0;
    // Left and top go down, right and bottom up to whole pixels; painted later.
    virtual bool invalidRect(const CRect& rect) = 0;
    // The window: HWND on Windows, the window's id with X11.
    virtual void* getPlatformRepresentation() const = 0;

    // The caller owns them; null when the system has none.
    virtual IPlatformTextEdit* createPlatformTextEdit(IPlatformTextEditCallback* callback) = 0;
    virtual IPlatformOptionMenu* createPlatformOptionMenu() = 0;
    // Blocks; timers go on. True when something was chosen. Paths in UTF-8.
    virtual bool runFileDialog(const FileDialogRequest& request,
                               std::vector<std::string>& chosen) = 0;
    virtual void cancelFileDialog() = 0;
    // A text, its lines parted by line feeds, with a key to close it; it ends with the frame.
    // Windows waits until the user has closed it, X11 does not.
    virtual void showMessage(const std::string& text, const std::string& caption) = 0;

    // The frame closes: no callback from now on; menu, dialog, text box and capture end. The window
    // goes away.
    virtual void close() = 0;

    // Milliseconds of a clock that only goes forward. Supplied by each platform.
    static uint32_t getTicks();

    // The system's, a visible child at (0, 0) of the parent window; null when that fails. The
    // caller owns it. Supplied by each platform.
    static IPlatformFrame* createNative(IPlatformFrameCallback* callback, const CRect& size,
                                        void* parent, PlatformType type,
                                        IPlatformFrameConfig* config);

    // The system's, or what the factory in force makes.
    static IPlatformFrame* createPlatformFrame(IPlatformFrameCallback* callback, const CRect& size,
                                               void* parent, PlatformType type,
                                               IPlatformFrameConfig* config);
    using Factory = decltype(&createNative);
    // For frames opened from now on; never null.
    static void setFactory(Factory factory);
};

}  // namespace VSTGUI
