#include "editor/controls/CAnimCoaxT46CustomKnob.h"

#include "editor/controls/Filmstrip.h"
#include "params/lookup/FrequencySteps.h"
#include "params/lookup/Truncate.h"

#include <algorithm>
#include <cmath>

using namespace VSTGUI;

namespace {

constexpr int32_t kSteps = 10;
static_assert(kSteps == kLowStepsHz.size() && kSteps == kMidStepsHz.size()
              && kSteps == kHighStepsHz.size());

// The labels' click areas. The program that draws them, resources/draw/look.py, reads these rows.
// clang-format off
const StepLabels<kSteps> kLabels{{
    // left top right bottom
    CRect(47,  0,  74,  13),
    CRect(81,  0, 109,  15),
    CRect(95, 18, 121,  35),
    CRect(98, 40, 120,  57),
    CRect(92, 64, 119,  81),
    CRect(78, 83, 106,  99),
    CRect(51, 86,  70, 100),
    CRect(18, 82,  44,  99),
    CRect( 0, 63,  26,  80),
    CRect( 0, 40,  23,  57),
}};
// clang-format on

// Extends `half`, a curve for 0.5 to 1, to an odd curve around 0.5.
template <class Half>
float oddAroundHalf(float x, Half half)
{
    const float y = std::clamp(half(x > 0.5f ? x : 1.f - x), 0.5f, 1.f);
    return std::clamp(x > 0.5f ? y : 1.f - y, 0.f, 1.f);
}

// Each of a curve's two steps is rounded to float.
float rounded(double x)
{
    return static_cast<float>(x);
}

}  // namespace

CAnimCoaxT46CustomKnob::CAnimCoaxT46CustomKnob(const CRect& size, IControlListener* listener,
                                               int32_t tag, int32_t frames, int32_t frameHeight,
                                               CBitmap* bitmap, const CPoint& offset,
                                               CCoord leftInset, CCoord topInset, CCoord rightInset,
                                               CCoord bottomInset)
    : CAnimCoaxT46Knob(size, listener, tag, frames, frameHeight, bitmap, offset, leftInset,
                       topInset, rightInset, bottomInset)
{
    setDragRange2(1.f / 96.f);
    setFineFactor2(1.f);
    setWheelStep(1.f / 32.f);
    setWheelStep2(1.f / 9.f);
    setWheelFine2(1.f);
}

float CAnimCoaxT46CustomKnob::positionFromValue(float x) const
{
    return oddAroundHalf(x, [](float t) {
        const float u = rounded(0.561501 * std::log(5.09949 * double{t}));
        return rounded(0.195897 * std::exp(1.78416 * double{u}));
    });
}

float CAnimCoaxT46CustomKnob::valueFromPosition(float x) const
{
    return oddAroundHalf(x, [](float t) {
        const float u = rounded(0.196098 * std::exp(1.78094 * double{t}));
        return rounded(0.560488 * std::log(5.10473 * double{u}));
    });
}

void CAnimCoaxT46CustomKnob::setValue(float newValue)
{
    CAnimCoaxT46Knob::setValue(positionFromValue(newValue));
}

float CAnimCoaxT46CustomKnob::getValue() const
{
    return valueFromPosition(value);
}

float CAnimCoaxT46CustomKnob::turned(float by) const
{
    return positionFromValue(valueFromPosition(value) + by);
}

void CAnimCoaxT46CustomKnob::setMax2(float newMax)
{
    CAnimCoaxT46Knob::setMax2(static_cast<float>(truncate(double{newMax} * 10. + 0.5)) * 0.1f);
}

int32_t CAnimCoaxT46CustomKnob::step() const
{
    return stepOf(value2, kSteps);
}

// The ring's filmstrip has one frame between neighbouring steps; those are skipped.
void CAnimCoaxT46CustomKnob::draw(CDrawContext* context)
{
    drawOuter(context, 2 * step());
    drawInner(context);
    drawOverlay(context, overlay, kLabels.rects[static_cast<size_t>(step())]);
    setDirty(false);
}

CMouseEventResult CAnimCoaxT46CustomKnob::onMouseDown(CPoint& where, const CButtonState& buttons)
{
    const CButtonState others = takeControl(buttons);
    const int32_t hit = (others & kLButton) ? kLabels.stepAt(toView(where)) : -1;
    if (hit < 0)
        return CAnimCoaxT46Knob::onMouseDown(where, others);
    value2 = static_cast<float>(lastStep.afterClick(hit, step())) * 0.11111111f;
    bounceValue2();
    ringIsOuter = true;
    notifyAtOnce();
    return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

CMouseEventResult CAnimCoaxT46CustomKnob::onMouseMoved(CPoint& where, const CButtonState& buttons)
{
    const CMouseEventResult result = CAnimCoaxT46Knob::onMouseMoved(where, takeControl(buttons));
    lastStep.keep(step());
    return result;
}

bool CAnimCoaxT46CustomKnob::onWheel(const CPoint& where, const float& distance,
                                     const CButtonState& buttons)
{
    const bool used = CAnimCoaxT46Knob::onWheel(where, distance, takeControl(buttons));
    lastStep.keep(step());
    return used;
}
