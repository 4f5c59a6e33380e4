// CAnimFreqKnob: a dial of twelve steps that goes round from the last to the first, each with a
// label that is lit while it is in force and sets it when clicked. Step 0 is off. It is one knob
// all over, without a ring. Control is left to the listener; only a double click resets it.
#pragma once

#include "editor/controls/CAnimCoaxT46Knob.h"
#include "editor/controls/StepLabels.h"

class CAnimFreqKnob : public CAnimCoaxT46Knob {
public:
    using CAnimCoaxT46Knob::CAnimCoaxT46Knob;

    // The lit labels, as large as the view. Null for none; the knob takes a reference of its own.
    void setOverlayBitmap(VSTGUI::CBitmap* bitmap) { overlay = bitmap; }

    // A value beyond either end comes in at the other; then to the nearest step.
    void bounceValue() override;

    void draw(VSTGUI::CDrawContext* context) override;
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint& where,
                                           const VSTGUI::CButtonState& buttons) override;
    using CAnimCoaxT46Knob::onWheel;
    bool onWheel(const VSTGUI::CPoint& where, const float& distance,
                 const VSTGUI::CButtonState& buttons) override;

    CLASS_METHODS(CAnimFreqKnob, CAnimCoaxT46Knob)

protected:
    ~CAnimFreqKnob() override = default;

    bool isOnRing(const VSTGUI::CPoint&) const override { return false; }

private:
    int32_t step() const;

    VSTGUI::SharedPointer<VSTGUI::CBitmap> overlay;
    LastStep lastStep;
};
