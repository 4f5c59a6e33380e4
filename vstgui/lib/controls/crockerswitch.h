// CRockerSwitch: a switch with two momentary sides, values -1 and 1; released, it returns to 0.
// Subclasses handle the press.
#pragma once

#include "vstgui/lib/cdrawdefs.h"
#include "vstgui/lib/controls/ccontrol.h"
#include "vstgui/lib/controls/imultibitmapcontrol.h"

namespace VSTGUI {

class CVSTGUITimer;

class CRockerSwitch : public CControl, public IMultiBitmapControl {
public:
    // Three frames: first side, released, second side; without heightOfOneImage they are as high as
    // the view. Style is kHorizontal or kVertical.
    CRockerSwitch(const CRect& size, IControlListener* listener, int32_t tag, CBitmap* background,
                  const CPoint& offset = CPoint(0, 0), const int32_t style = kHorizontal);
    CRockerSwitch(const CRect& size, IControlListener* listener, int32_t tag,
                  CCoord heightOfOneImage, CBitmap* background, const CPoint& offset = CPoint(0, 0),
                  const int32_t style = kHorizontal);
    // The copy has no timer running.
    CRockerSwitch(const CRockerSwitch& other);

    void draw(CDrawContext* context) override;
    using CView::onWheel;
    bool onWheel(const CPoint& where, const float& distance, const CButtonState& buttons) override;
    int32_t onKeyDown(VstKeyCode& keyCode) override;
    int32_t onKeyUp(VstKeyCode& keyCode) override;
    bool removed(CView* parent) override;
    CMessageResult notify(CBaseObject* sender, IdStringPtr message) override;
    virtual bool sizeToFit() { return fitToFrame(*this); }

    CLASS_METHODS(CRockerSwitch, CControl)

protected:
    ~CRockerSwitch() override;

    CPoint offset;
    int32_t style;
    CVSTGUITimer* resetValueTimer{nullptr};  // runs after a turn of the wheel

private:
    // -1 or 1 for the arrow keys of the switch's direction, 0 for other keys.
    float sideOfKey(const VstKeyCode& keyCode) const;
    void stopResetTimer();
};

}  // namespace VSTGUI
