// CAnimGainKnob: one knob whose positions lie closer together the further it is from its middle.
// Control is left to the listener; only a double click resets it.
#pragma once

#include "editor/controls/CAnimCoaxT46Knob.h"

class CAnimGainKnob : public CAnimCoaxT46Knob {
public:
    using CAnimCoaxT46Knob::CAnimCoaxT46Knob;

    // Fitted quartics from 0..1 to 0..1, odd around 0.5. They are not exact inverses, and near the
    // ends leave 0..1 by less than 0.0001.
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
