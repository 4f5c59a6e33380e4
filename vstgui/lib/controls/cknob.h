// CKnob: base of rotary controls. Subclasses draw and handle the mouse.
#pragma once

#include "vstgui/lib/controls/ccontrol.h"

namespace VSTGUI {

class CKnob : public CControl {
public:
    // Bitmaps may be null. `handle` and `drawStyle` are ignored.
    CKnob(const CRect& size, IControlListener* listener, int32_t tag, CBitmap* background,
          CBitmap* handle, const CPoint& offset = CPoint(0, 0), int32_t drawStyle = 0);

    // Draws the background bitmap only.
    void draw(CDrawContext* context) override;
    CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;
    int32_t onKeyDown(VstKeyCode& keyCode) override;
    void setMin(float newMin) override;
    void setMax(float newMax) override;
    void setViewSize(const CRect& rect, bool doInvalid = true) override;

    CLASS_METHODS(CKnob, CControl)

protected:
    ~CKnob() override = default;

    CPoint offset;
};

}  // namespace VSTGUI
