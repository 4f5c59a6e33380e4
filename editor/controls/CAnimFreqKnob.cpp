#include "editor/controls/CAnimFreqKnob.h"

#include "editor/controls/Filmstrip.h"
#include "params/lookup/FrequencySteps.h"

#include <algorithm>

using namespace VSTGUI;

namespace {

constexpr int32_t kSteps = 12;
static_assert(kSteps == kHighPassStepsHz.size());
constexpr float kStepValue = 0.09090909f;
constexpr float kRound = 1.0909091f;  // a whole turn: twelve steps

// The labels' click areas. The program that draws them, resources/draw/look.py, reads these rows.
// clang-format off
const StepLabels<kSteps> kLabels{{
    // left top right bottom
    CRect(44,  0,  67,  22),
    CRect(70,  7, 103,  31),
    CRect(85, 32, 113,  48),
    CRect(88, 48, 111,  69),
    CRect(83, 71, 110,  85),
    CRect(69, 86, 102, 108),
    CRect(45, 85,  68, 107),
    CRect(14, 85,  42, 107),
    CRect( 7, 67,  30,  84),
    CRect( 1, 48,  24,  65),
    CRect( 1, 32,  34,  49),
    CRect(10, 14,  43,  32),
}};
// clang-format on

}  // namespace

int32_t CAnimFreqKnob::step() const
{
    return stepOf(value, kSteps);
}

void CAnimFreqKnob::bounceValue()
{
    if (value > 1.f)
        value -= kRound;
    else if (value < 0.f)
        value += kRound;
    CAnimCoaxT46Knob::bounceValue();
    value = static_cast<float>(step()) * kStepValue;
}

void CAnimFreqKnob::draw(CDrawContext* context)
{
    drawOuter(context, 0);
    drawInner(context);
    drawOverlay(context, overlay, kLabels.rects[static_cast<size_t>(step())]);
    setDirty(false);
}

CMouseEventResult CAnimFreqKnob::onMouseDown(CPoint& where, const CButtonState& buttons)
{
    const CButtonState others = takeControl(buttons);
    const int32_t hit = (others & kLButton) ? kLabels.stepAt(toView(where)) : -1;
    if (hit < 0)
        return CAnimCoaxT46Knob::onMouseDown(where, others);
    value = static_cast<float>(lastStep.afterClick(hit, step())) * kStepValue;
    bounceValue();
    ringIsOuter = false;
    notifyAtOnce();
    return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

CMouseEventResult CAnimFreqKnob::onMouseMoved(CPoint& where, const CButtonState& buttons)
{
    const CMouseEventResult result = CAnimCoaxT46Knob::onMouseMoved(where, takeControl(buttons));
    lastStep.keep(step());
    return result;
}

bool CAnimFreqKnob::onWheel(const CPoint& where, const float& distance, const CButtonState& buttons)
{
    const bool used = CAnimCoaxT46Knob::onWheel(where, distance, takeControl(buttons));
    lastStep.keep(step());
    return used;
}
