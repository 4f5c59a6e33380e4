// CAnimCoaxT46Knob: two knobs on one axis, an inner knob and an outer ring, drawn from filmstrips.
//
// The inner knob is the control's value, the ring its value2. A press or the wheel acts on the one
// under the mouse; getRingIsOuter tells the listener which. In a class with a value law, `value` is
// the knob's position, and setValue and getValue convert from and to the parameter's value.
#pragma once

#include "vstgui/lib/cbitmap.h"
#include "vstgui/lib/controls/cknob.h"

class CAnimCoaxT46Knob : public VSTGUI::CKnob {
public:
    // The pictures fill the view's rectangle less the inset, or less one inset a side (pixels). The
    // bitmap is the inner knob's; frameHeight is in pixels.
    CAnimCoaxT46Knob(const VSTGUI::CRect& size, VSTGUI::IControlListener* listener, int32_t tag,
                     int32_t frames, int32_t frameHeight, VSTGUI::CBitmap* bitmap,
                     const VSTGUI::CPoint& offset, VSTGUI::CCoord inset);
    CAnimCoaxT46Knob(const VSTGUI::CRect& size, VSTGUI::IControlListener* listener, int32_t tag,
                     int32_t frames, int32_t frameHeight, VSTGUI::CBitmap* bitmap,
                     const VSTGUI::CPoint& offset, VSTGUI::CCoord leftInset,
                     VSTGUI::CCoord topInset, VSTGUI::CCoord rightInset,
                     VSTGUI::CCoord bottomInset);

    // In the coordinates of the view's rectangle; a point at the radius is on the inner knob.
    virtual void setCentre(const VSTGUI::CPoint& point, float radius);
    virtual void setInnerRadius(float radius);
    virtual void bounceValue2();

    // The fraction of the range that one pixel upwards adds, inner and outer; with Shift times the
    // fine factor.
    virtual void setDragRange(float range);
    virtual void setDragRange2(float range);
    virtual void setFineFactor(float factor);
    virtual void setFineFactor2(float factor);
    // What one notch of the wheel adds, inner and outer; with Shift times the fine factor.
    void setWheelStep(float step) { wheelStep = step; }
    void setWheelFine(float factor) { wheelFine = factor; }
    void setWheelStep2(float step) { wheelStep2 = step; }
    void setWheelFine2(float factor) { wheelFine2 = factor; }

    // The ring's; values are not limited to the range.
    virtual void setValue2(float newValue);
    virtual float getValue2() const;
    virtual void setMin2(float newMin);
    virtual float getMin2() const;
    virtual void setMax2(float newMax);
    virtual float getMax2() const;
    virtual void setDefaultValue2(float newDefault);
    virtual float getDefaultValue2() const;
    // Null for none. The knob keeps a reference.
    virtual void setOuterBitmap(VSTGUI::CBitmap* bitmap, int32_t frames);

    // Whether the last drag, click on a label or turn of the wheel was on the ring.
    bool getRingIsOuter() const { return ringIsOuter; }
    // Whether Control was held at the last event; false in classes without takeControl.
    bool getCtrlHeld() const { return ctrlHeld; }

    void draw(VSTGUI::CDrawContext* context) override;
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    // Ends the gesture where it stands.
    VSTGUI::CMouseEventResult onMouseCancel() override;
    VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint& where,
                                           const VSTGUI::CButtonState& buttons) override;
    using VSTGUI::CKnob::onWheel;
    bool onWheel(const VSTGUI::CPoint& where, const float& distance,
                 const VSTGUI::CButtonState& buttons) override;
    void setValue(float newValue) override;

    CLASS_METHODS(CAnimCoaxT46Knob, VSTGUI::CKnob)

protected:
    ~CAnimCoaxT46Knob() override = default;

    virtual bool isOnRing(const VSTGUI::CPoint& where) const;
    // The inner value after the wheel has added that much.
    virtual float turned(float by) const { return value + by; }
    // Stores whether Control is held, and returns the buttons without it.
    VSTGUI::CButtonState takeControl(const VSTGUI::CButtonState& buttons);
    // Reports a change by a click or a notch as a whole gesture.
    void notifyAtOnce();

    void drawOuter(VSTGUI::CDrawContext* context, int32_t frame) const;
    void drawInner(VSTGUI::CDrawContext* context) const;
    // Draws a part of a picture that is as large as the view; the part is relative to the view.
    void drawOverlay(VSTGUI::CDrawContext* context, VSTGUI::CBitmap* overlay,
                     VSTGUI::CRect part) const;
    VSTGUI::CPoint toView(const VSTGUI::CPoint& where) const
    {
        return where - getViewSize().getTopLeft();
    }

    float value2{0.f};
    bool ringIsOuter{false};
    float wheelStep{0.01f};
    float wheelFine{0.1f};
    float wheelStep2{0.01f};
    float wheelFine2{0.1f};

private:
    VSTGUI::CMouseEventResult drag(const VSTGUI::CPoint& where,
                                   const VSTGUI::CButtonState& buttons);
    // What one pixel of a drag adds to the value dragged, whose range is given.
    float dragCoefficient(float range, const VSTGUI::CButtonState& buttons) const;

    VSTGUI::CRect imageRect;
    VSTGUI::CPoint centre;
    float innerRadius;
    VSTGUI::SharedPointer<VSTGUI::CBitmap> outerBitmap;
    int32_t outerFrames{0};
    int32_t innerFrames;
    int32_t innerFrameHeight;
    float defaultValue2{0.25f};
    float min2{0.f};
    float max2{1.f};
    float dragRange{0.005f};
    float dragRange2{0.01f};
    float fineFactor{0.1f};
    float fineFactor2{0.1f};
    bool ctrlHeld{false};

    // The drag in progress
    float entryValue{0.f};
    float coefficient{0.f};
    VSTGUI::CButtonState lastButtons;
    VSTGUI::CPoint pressPoint;
    VSTGUI::CPoint lastPoint;
    VSTGUI::CPoint accumulatedPoint;
};
