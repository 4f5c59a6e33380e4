// CAnimCoaxT46CustomKnob: an equaliser band. Inside its gain, around it the ten steps of its
// frequency, each with a label that is lit while it is in force and sets it when clicked. Step 0 is
// off. Control is left to the listener; only a double click resets the knob.
#pragma once

#include "editor/controls/CAnimCoaxT46Knob.h"
#include "editor/controls/StepLabels.h"

class CAnimCoaxT46CustomKnob : public CAnimCoaxT46Knob {
public:
    CAnimCoaxT46CustomKnob(const VSTGUI::CRect& size, VSTGUI::IControlListener* listener,
                           int32_t tag, int32_t frames, int32_t frameHeight,
                           VSTGUI::CBitmap* bitmap, const VSTGUI::CPoint& offset,
                           VSTGUI::CCoord leftInset, VSTGUI::CCoord topInset,
                           VSTGUI::CCoord rightInset, VSTGUI::CCoord bottomInset);

    // The lit labels, as large as the view. Null for none; the knob takes a reference of its own.
    void setOverlayBitmap(VSTGUI::CBitmap* bitmap) { overlay = bitmap; }

    // Fits from 0..1 to 0..1, close to the identity and not exact inverses of each other.
    virtual float positionFromValue(float x) const;
    virtual float valueFromPosition(float x) const;

    void draw(VSTGUI::CDrawContext* context) override;
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint& where,
                                           const VSTGUI::CButtonState& buttons) override;
    using CAnimCoaxT46Knob::onWheel;
    bool onWheel(const VSTGUI::CPoint& where, const float& distance,
                 const VSTGUI::CButtonState& buttons) override;
    void setValue(float newValue) override;
    float getValue() const override;
    // Rounded to tenths.
    void setMax2(float newMax) override;

    CLASS_METHODS(CAnimCoaxT46CustomKnob, CAnimCoaxT46Knob)

protected:
    ~CAnimCoaxT46CustomKnob() override = default;

    // The wheel moves the parameter, not the position.
    float turned(float by) const override;

private:
    int32_t step() const;

    VSTGUI::SharedPointer<VSTGUI::CBitmap> overlay;
    LastStep lastStep;
};
