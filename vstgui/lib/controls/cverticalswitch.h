// CVerticalSwitch: a switch with one position per frame, set by the height of the mouse in the
// view.
#pragma once

#include "vstgui/lib/controls/ccontrol.h"
#include "vstgui/lib/controls/imultibitmapcontrol.h"

namespace VSTGUI {

class CVerticalSwitch : public CControl, public IMultiBitmapControl {
public:
    // The first constructor takes frames as high as the view. maxPositions is ignored.
    CVerticalSwitch(const CRect& size, IControlListener* listener, int32_t tag, CBitmap* background,
                    const CPoint& offset = CPoint(0, 0));
    CVerticalSwitch(const CRect& size, IControlListener* listener, int32_t tag, int32_t subPixmaps,
                    CCoord heightOfOneImage, int32_t maxPositions, CBitmap* background,
                    const CPoint& offset = CPoint(0, 0));

    void draw(CDrawContext* context) override;
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
    int32_t onKeyDown(VstKeyCode& keyCode) override;
    virtual bool sizeToFit() { return fitToFrame(*this); }

    CLASS_METHODS(CVerticalSwitch, CControl)

protected:
    ~CVerticalSwitch() override = default;

    CPoint offset;

private:
    CCoord positionHeight{0.};  // pixels, while editing
};

}  // namespace VSTGUI
