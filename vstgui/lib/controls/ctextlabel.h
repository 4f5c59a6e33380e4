// CTextLabel: one line of text.
#pragma once

#include "vstgui/lib/controls/cparamdisplay.h"

namespace VSTGUI {

class CTextLabel : public CParamDisplay {
public:
    explicit CTextLabel(const CRect& size, UTF8StringPtr text = nullptr,
                        CBitmap* background = nullptr, const int32_t style = 0);

    // Null counts as empty.
    virtual void setText(UTF8StringPtr newText);
    // Valid until the next setText.
    virtual UTF8StringPtr getText() const { return text.c_str(); }

    void draw(CDrawContext* context) override;

    CLASS_METHODS(CTextLabel, CParamDisplay)

protected:
    ~CTextLabel() override = default;

    std::string text;
};

}  // namespace VSTGUI
