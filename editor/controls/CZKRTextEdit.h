// CZKRTextEdit: a line of text on a background picture. A press opens a box for typing.
#pragma once

#include "vstgui/lib/controls/ctextedit.h"

#include <optional>

class CZKRTextEdit : public VSTGUI::CTextEdit {
public:
    using VSTGUI::CTextEdit::CTextEdit;

    virtual bool isEditingText() const { return editingText; }
    // Colours of the drawn text, of its shadow, and of the box's text and background. Without them
    // the colours of CParamDisplay are used and no shadow is drawn. The shadow is one pixel to the
    // right of and below the text.
    virtual void setTextColor(const VSTGUI::CColor& color);
    virtual void setTextShadowColor(const VSTGUI::CColor& color);
    virtual void setBoxTextColor(const VSTGUI::CColor& color);
    virtual void setBoxBackColor(const VSTGUI::CColor& color);
    // Of the drawn text, in pixels; 0 for the font's own size.
    virtual void setTextSize(float pixels);
    // Moves the drawn text, in pixels.
    virtual void setTextOffset(const VSTGUI::CPoint& offset);
    // The largest number of characters that can be typed.
    virtual void setMaxCharacters(int32_t count);

    // The text is independent of the value.
    void setValue(float newValue) override;
    // Draws no text while the box is open. Text that is too wide ends in an ellipsis.
    void draw(VSTGUI::CDrawContext* context) override;
    void takeFocus() override;
    void looseFocus() override;

    VSTGUI::CColor platformGetFontColor() const override;
    VSTGUI::CColor platformGetBackColor() const override;
    int32_t platformGetMaxCharacters() const override { return maxCharacters; }

    CLASS_METHODS(CZKRTextEdit, VSTGUI::CTextEdit)

protected:
    ~CZKRTextEdit() override = default;

private:
    void drawLine(VSTGUI::CDrawContext* context);

    std::optional<VSTGUI::CColor> textColor;
    std::optional<VSTGUI::CColor> textShadowColor;
    std::optional<VSTGUI::CColor> boxTextColor;
    std::optional<VSTGUI::CColor> boxBackColor;
    float textSize{0.f};
    VSTGUI::CPoint textOffset;
    int32_t maxCharacters{255};
    bool editingText{false};
};
