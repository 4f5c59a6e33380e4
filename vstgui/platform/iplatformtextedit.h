// IPlatformTextEdit: a one-line text box on top of a text control, and what it asks of the control.
#pragma once

#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/cdrawdefs.h"
#include "vstgui/lib/cfont.h"
#include "vstgui/lib/crect.h"
#include "vstgui/lib/vstkeycode.h"

namespace VSTGUI {

// Rectangles are in frame coordinates.
class IPlatformTextEditCallback {
public:
    virtual ~IPlatformTextEditCallback() = default;

    virtual CColor platformGetBackColor() const = 0;
    virtual CColor platformGetFontColor() const = 0;
    virtual CFontRef platformGetFont() const = 0;
    virtual CHoriTxtAlign platformGetHoriTxtAlign() const = 0;
    virtual UTF8StringPtr platformGetText() const = 0;
    virtual CRect platformGetSize() const = 0;
    virtual CRect platformGetVisibleSize() const = 0;
    virtual CPoint platformGetTextInset() const = 0;
    // Most characters (code points) that can be typed.
    virtual int32_t platformGetMaxCharacters() const { return 255; }

    // Ends the editing. The box that calls this is gone afterwards: touch nothing of it.
    virtual void platformLooseFocus(bool returnPressed) = 0;
    // Escape, Return and Tab go here first; when the answer is true the box may be gone as well.
    virtual bool platformOnKeyDown(const VstKeyCode& key) = 0;
    virtual void platformTextDidChange() = 0;
};

class IPlatformTextEdit : public CBaseObject {
public:
    // UTF-8, valid until the next call on the object.
    virtual UTF8StringPtr getText() = 0;
    virtual bool setText(UTF8StringPtr text) = 0;
    // The control moved.
    virtual bool updateSize() = 0;

protected:
    explicit IPlatformTextEdit(IPlatformTextEditCallback* callback) : textEdit(callback) { }

    IPlatformTextEditCallback* textEdit;
};

}  // namespace VSTGUI
