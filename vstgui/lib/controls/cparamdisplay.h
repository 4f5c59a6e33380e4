// CParamDisplay: shows its value as text.
#pragma once

#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/cdrawdefs.h"
#include "vstgui/lib/cfont.h"
#include "vstgui/lib/controls/ccontrol.h"

#include <functional>
#include <string>

namespace VSTGUI {

class CParamDisplay : public CControl {
public:
    // The same style bits as members of the class.
    enum Style {
        kPopupStyle = VSTGUI::kPopupStyle,
        kCheckStyle = VSTGUI::kCheckStyle,
        kMultipleCheckStyle = VSTGUI::kMultipleCheckStyle,
        kNoTextStyle = VSTGUI::kNoTextStyle,
        kNoDrawStyle = VSTGUI::kNoDrawStyle,
        kDoubleClickStyle = VSTGUI::kDoubleClickStyle
    };

    // Style is a sum of CControlEnum.
    explicit CParamDisplay(const CRect& size, CBitmap* background = nullptr,
                           const int32_t style = 0);

    virtual void setFont(CFontRef font);  // null is ignored
    CFontRef getFont() const { return fontID; }
    virtual void setFontColor(const CColor& color) { change(fontColor, color); }
    CColor getFontColor() const { return fontColor; }
    virtual void setBackColor(const CColor& color) { change(backColor, color); }
    CColor getBackColor() const { return backColor; }
    virtual void setFrameColor(const CColor& color) { change(frameColor, color); }
    CColor getFrameColor() const { return frameColor; }
    virtual void setShadowColor(const CColor& color) { change(shadowColor, color); }
    virtual void setHoriAlign(CHoriTxtAlign align) { change(horiTxtAlign, align); }
    CHoriTxtAlign getHoriAlign() const { return horiTxtAlign; }
    virtual void setTextInset(const CPoint& inset) { change(textInset, inset); }
    const CPoint& getTextInset() const { return textInset; }
    virtual void setStyle(int32_t newStyle) { change(style, newStyle); }
    int32_t getStyle() const { return style; }
    virtual void setFrameWidth(const CCoord& width) { change(frameWidth, width); }  // pixels
    virtual void setAntialias(bool state) { change(antialias, state); }
    bool getAntialias() const { return antialias; }

    // Decimal places of the value's text.
    virtual void setPrecision(uint8_t decimals) { change(valuePrecision, decimals); }
    // Makes the value's text. Where it returns false, the value is shown with decimals.
    using ValueToStringFunction =
        std::function<bool(float value, std::string& text, CParamDisplay*)>;
    void setValueToStringFunction(const ValueToStringFunction& function);

    void draw(CDrawContext* context) override;

    CLASS_METHODS(CParamDisplay, CControl)

protected:
    ~CParamDisplay() override = default;

    std::string valueText() const;
    virtual void drawBack(CDrawContext* context, CBitmap* newBack = nullptr);
    virtual void drawPlatformText(CDrawContext* context, UTF8StringPtr text);
    virtual void drawPlatformText(CDrawContext* context, UTF8StringPtr text, const CRect& rect);

    SharedPointer<CFontDesc> fontID;
    CColor fontColor{kWhiteCColor};
    CColor backColor{kBlackCColor};
    CColor frameColor{kBlackCColor};
    CColor shadowColor{kRedCColor};
    CHoriTxtAlign horiTxtAlign{kCenterText};
    CPoint textInset;
    int32_t style;
    CCoord frameWidth{1.};
    uint8_t valuePrecision{2};
    bool antialias{true};

private:
    template <class T>
    void change(T& field, const T& newValue)
    {
        if (field == newValue)
            return;
        field = newValue;
        setDirty();
    }

    ValueToStringFunction valueToString;
};

}  // namespace VSTGUI
