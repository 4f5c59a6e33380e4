// CAnimCoaxT46CustomKnob: the knob of an equaliser band. The inner knob sets the gain, the ring one
// of ten frequency steps; step 0 is off. Each step has a label, lit while the step is set, and a
// click on a label sets its step. A click with Control does not reset the knob (the listener uses
// Control); a double click does.
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

    // The lit labels, as large as the view; null for none. The knob keeps a reference.
    void setOverlayBitmap(VSTGUI::CBitmap* bitmap) { overlay = bitmap; }

    // Fitted curves from 0..1 to 0..1, close to the identity; not exact inverses of each other.
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

    // The wheel adds to the parameter, not to the position.
    float turned(float by) const override;

private:
    int32_t step() const;

    VSTGUI::SharedPointer<VSTGUI::CBitmap> overlay;
    LastStep lastStep;
};
