// CAnimGainKnob: a single knob, without a ring, whose value changes more slowly near its middle
// than near its ends. A click with Control does not reset it (the listener uses Control); a double
// click does.
#pragma once

#include "editor/controls/CAnimCoaxT46Knob.h"

class CAnimGainKnob : public CAnimCoaxT46Knob {
public:
    using CAnimCoaxT46Knob::CAnimCoaxT46Knob;

    // Fitted quartics from 0..1 to 0..1, odd around 0.5. Not exact inverses of each other; near the
    // ends they leave 0..1 by less than 0.0001.
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

    CLASS_METHODS(CAnimGainKnob, CAnimCoaxT46Knob)

protected:
    ~CAnimGainKnob() override = default;
};
