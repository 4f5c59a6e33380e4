// IPlatformTextEdit: a one-line text box over a text control, and its callback to the control.
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
    // The largest number of characters (code points) that can be typed.
    virtual int32_t platformGetMaxCharacters() const { return 255; }

    // Ends the editing, which deletes the box: the caller must not use it afterwards.
    virtual void platformLooseFocus(bool returnPressed) = 0;
    // Called for Escape, Return and Tab before the box acts on them. After true, the box may be
    // deleted as well.
    virtual bool platformOnKeyDown(const VstKeyCode& key) = 0;
    virtual void platformTextDidChange() = 0;
};

class IPlatformTextEdit : public CBaseObject {
public:
    // UTF-8, valid until the next call on the object.
    virtual UTF8StringPtr getText() = 0;
    virtual bool setText(UTF8StringPtr newText) = 0;
    // Call it when the control has moved.
    virtual bool updateSize() = 0;

protected:
    explicit IPlatformTextEdit(IPlatformTextEditCallback* textEdit) : textEdit(textEdit) { }

    IPlatformTextEditCallback* textEdit;
};

}  // namespace VSTGUI
