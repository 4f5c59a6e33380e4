// CKickButton: a momentary button that acts on the release over the button. Subclasses handle the
// press.
#pragma once

#include "vstgui/lib/controls/ccontrol.h"
#include "vstgui/lib/controls/imultibitmapcontrol.h"

namespace VSTGUI {

class CKickButton : public CControl, public IMultiBitmapControl {
public:
    // Two frames: normal, pressed. Without heightOfOneImage they are as high as the view.
    CKickButton(const CRect& size, IControlListener* listener, int32_t tag, CBitmap* background,
                const CPoint& offset = CPoint(0, 0));
    CKickButton(const CRect& size, IControlListener* listener, int32_t tag, CCoord heightOfOneImage,
                CBitmap* background, const CPoint& offset = CPoint(0, 0));

    void draw(CDrawContext* context) override;
    CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
    int32_t onKeyDown(VstKeyCode& keyCode) override;
    int32_t onKeyUp(VstKeyCode& keyCode) override;
    virtual bool sizeToFit() { return fitToFrame(*this); }

    CLASS_METHODS(CKickButton, CControl)

protected:
    ~CKickButton() override = default;

    CPoint offset;
};

}  // namespace VSTGUI
