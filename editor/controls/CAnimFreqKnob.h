// CAnimFreqKnob: a dial of twelve steps; the last is followed by the first. Step 0 is off. Each
// step has a label, lit while the step is set, and a click on a label sets its step. There is no
// ring. A click with Control does not reset the dial (the listener uses Control); a double click
// does.
#pragma once

#include "editor/controls/CAnimCoaxT46Knob.h"
#include "editor/controls/StepLabels.h"

class CAnimFreqKnob : public CAnimCoaxT46Knob {
public:
    using CAnimCoaxT46Knob::CAnimCoaxT46Knob;

    // The lit labels, as large as the view; null for none. The knob keeps a reference.
    void setOverlayBitmap(VSTGUI::CBitmap* bitmap) { overlay = bitmap; }

    // Wraps a value beyond either end around to the other, then rounds to the nearest step.
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
