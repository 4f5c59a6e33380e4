// CZKRTextEdit: a line of text on the picture behind it, which a press opens for typing.
#pragma once

#include "vstgui/lib/controls/ctextedit.h"

#include <optional>

class CZKRTextEdit : public VSTGUI::CTextEdit {
public:
    using VSTGUI::CTextEdit::CTextEdit;

    virtual bool isEditingText() const { return editingText; }
    // Colours of the text as it is drawn and in the open box, and of the box; without them, those
    // of every text control hold. The shadow lies one pixel right of and below the text; there is
    // none without its colour.
    virtual void setTextColor(const VSTGUI::CColor& color);
    virtual void setTextShadowColor(const VSTGUI::CColor& color);
    virtual void setBoxTextColor(const VSTGUI::CColor& color);
    virtual void setBoxBackColor(const VSTGUI::CColor& color);
    // Of the text as it is drawn, in pixels; 0 is the font's own.
    virtual void setTextSize(float pixels);
    // Moves the text as it is drawn.
    virtual void setTextOffset(const VSTGUI::CPoint& by);
    // The most that can be typed.
    virtual void setMaxCharacters(int32_t count);

    // The text is independent of the value.
    void setValue(float newValue) override;
    // The background picture alone while the box is open.
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
