// CKnob: a rotary control.
#pragma once

#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/controls/ccontrol.h"

namespace VSTGUI {

class CKnob : public CControl {
public:
    // Without a handle bitmap the position is shown by a line. Bitmaps may be null.
    CKnob(const CRect& size, IControlListener* listener, int32_t tag, CBitmap* background,
          CBitmap* handle, const CPoint& offset = CPoint(0, 0), int32_t drawStyle = 0);
    CKnob(const CKnob& other);

    // Radians, clockwise from three o'clock.
    virtual void setStartAngle(float angle);
    virtual float getStartAngle() const { return startAngle; }
    virtual void setRangeAngle(float angle);
    virtual float getRangeAngle() const { return rangeAngle; }
    // How many times finer a drag is with the zoom modifier.
    virtual void setZoomFactor(float factor) { zoomFactor = factor; }
    virtual float getZoomFactor() const { return zoomFactor; }
    // Pixels between the handle's path and the edge.
    virtual void setInsetValue(CCoord pixels) { inset = pixels; }
    virtual CCoord getInsetValue() const { return inset; }
    virtual void setHandleBitmap(CBitmap* bitmap);
    CBitmap* getHandleBitmap() const { return pHandle; }
    virtual void setColorHandle(const CColor& color);
    virtual bool sizeToFit();

    void draw(CDrawContext* context) override;
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
    using CView::onWheel;
    bool onWheel(const CPoint& where, const float& distance, const CButtonState& buttons) override;
    int32_t onKeyDown(VstKeyCode& keyCode) override;
    void setMin(float newMin) override;
    void setMax(float newMax) override;
    void setViewSize(const CRect& rect, bool invalid = true) override;

    CLASS_METHODS(CKnob, CControl)

protected:
    ~CKnob() override;

    void moveBy(float notches, bool fine);
    // The handle's middle at the present value.
    CPoint handlePosition() const;
    float angleAt(const CPoint& where) const;

    CPoint offset;
    SharedPointer<CBitmap> pHandle;
    CColor colorHandle{kWhiteCColor};
    float startAngle;
    float rangeAngle;
    float zoomFactor{1.5f};
    CCoord inset{3.};

private:
    bool dragsLinearly(const CButtonState& buttons) const;

    CPoint lastPoint;
    float entryValue{0.f};  // normalised, before rounding and clamping
};

}  // namespace VSTGUI
