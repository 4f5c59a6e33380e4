#include "editor/controls/CAnimGainKnob.h"

using namespace VSTGUI;

namespace {

struct Quartic {
    double x4, x3, x2, x1, x0;

    // For x from 0.5 to 1.
    float at(float single) const
    {
        const double x = double{single};
        const double square = x * x;
        const double cube = square * x;
        return static_cast<float>(x4 * (cube * x) + x3 * cube + x2 * square + x1 * x + x0);
    }

    float oddAroundHalf(float x) const { return x > 0.5f ? at(x) : 1.f - at(1.f - x); }
};

// clang-format off
//                               x^4       x^3       x^2       x         1
constexpr Quartic kPosition{ -8.60583, 30.0348, -39.2757, 23.4886, -4.64187};
constexpr Quartic kValue   {-10.407,   31.2057, -32.9447, 15.3203, -2.17425};
// clang-format on

}  // namespace

float CAnimGainKnob::positionFromValue(float x) const
{
    return kPosition.oddAroundHalf(x);
}

float CAnimGainKnob::valueFromPosition(float x) const
{
    return kValue.oddAroundHalf(x);
}

void CAnimGainKnob::draw(CDrawContext* context)
{
    drawOuter(context, 0);
    drawInner(context);
    setDirty(false);
}

CMouseEventResult CAnimGainKnob::onMouseDown(CPoint& where, const CButtonState& buttons)
{
    return CAnimCoaxT46Knob::onMouseDown(where, takeControl(buttons));
}

CMouseEventResult CAnimGainKnob::onMouseMoved(CPoint& where, const CButtonState& buttons)
{
    return CAnimCoaxT46Knob::onMouseMoved(where, takeControl(buttons));
}

bool CAnimGainKnob::onWheel(const CPoint& where, const float& distance, const CButtonState& buttons)
{
    return CAnimCoaxT46Knob::onWheel(where, distance, takeControl(buttons));
}

void CAnimGainKnob::setValue(float newValue)
{
    CAnimCoaxT46Knob::setValue(positionFromValue(newValue));
}

float CAnimGainKnob::getValue() const
{
    return valueFromPosition(value);
}
