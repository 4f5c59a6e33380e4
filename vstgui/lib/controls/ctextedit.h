// CTextEdit: a line of text with a text box of the platform's, open while the control has the
// focus.
#pragma once

#include "vstgui/lib/controls/ctextlabel.h"
#include "vstgui/platform/iplatformtextedit.h"

namespace VSTGUI {

extern const IdStringPtr kMsgLooseFocus;

class CTextEdit : public CTextLabel, public IPlatformTextEditCallback {
public:
    CTextEdit(const CRect& size, IControlListener* listener, int32_t tag,
              UTF8StringPtr text = nullptr, CBitmap* background = nullptr, const int32_t style = 0);
    // The copy has no text box open.
    CTextEdit(const CTextEdit& other);

    bool bWasReturnPressed{false};  // whether Return ended the last editing

    using StringToValueFunction =
        std::function<bool(UTF8StringPtr text, float& result, CTextEdit*)>;
    // Converts every new text to the value; without it, text does not change the value.
    void setStringToValueFunction(const StringToValueFunction& function);
    // Takes over each change in the box at once, not only when it is closed.
    virtual void setImmediateTextChange(bool state) { immediateTextChange = state; }
    IPlatformTextEdit* getPlatformTextEdit() const { return platformControl; }

    // Also replaces the text by the value's.
    void setValue(float newValue) override;
    void setText(UTF8StringPtr newText) override;
    void draw(CDrawContext* context) override;
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    int32_t onKeyDown(VstKeyCode& keyCode) override;
    bool wantsFocus() const override;
    void takeFocus() override;
    // Takes over the box's text and closes the box.
    void looseFocus() override;
    void setViewSize(const CRect& rect, bool doInvalid = true) override;
    void parentSizeChanged() override;
    bool removed(CView* parent) override;

    CColor platformGetBackColor() const override { return getBackColor(); }
    CColor platformGetFontColor() const override { return getFontColor(); }
    CFontRef platformGetFont() const override { return getFont(); }
    CHoriTxtAlign platformGetHoriTxtAlign() const override { return getHoriAlign(); }
    UTF8StringPtr platformGetText() const override { return text.c_str(); }
    CRect platformGetSize() const override;
    CRect platformGetVisibleSize() const override;
    CPoint platformGetTextInset() const override { return getTextInset(); }
    void platformLooseFocus(bool returnPressed) override;
    bool platformOnKeyDown(const VstKeyCode& key) override;
    void platformTextDidChange() override;

    CLASS_METHODS(CTextEdit, CTextLabel)

protected:
    ~CTextEdit() override;
    void beforeDelete() override;

    virtual void updateText(IPlatformTextEdit* box);

    IPlatformTextEdit* platformControl{nullptr};  // while the box is open
    // As the box reads it back: text that is not UTF-8 is shown with replacements, and is kept
    // unless the user changes it.
    std::string shownText;
    bool immediateTextChange{false};

private:
    void dropFocus(bool returnPressed);
    void showText(UTF8StringPtr newText);

    StringToValueFunction stringToValue;
};

}  // namespace VSTGUI
