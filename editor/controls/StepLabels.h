// The clickable labels around a stepped dial, and the step that a click on "off" returns to.
#pragma once

#include "vstgui/lib/crect.h"

#include <array>
#include <cstddef>

template <size_t steps>
struct StepLabels {
    // Relative to the view, in the order of the steps.
    std::array<VSTGUI::CRect, steps> rects;

    // -1 for none. Where labels overlap, the last one wins.
    int32_t stepAt(const VSTGUI::CPoint& inView) const
    {
        int32_t hit = -1;
        for (size_t step = 0; step < steps; ++step)
            if (rects[step].pointInside(inView))
                hit = static_cast<int32_t>(step);
        return hit;
    }
};

// Remembers the step that a dial had before it was switched off.
class LastStep {
public:
    void keep(int32_t step)
    {
        if (step > 0)
            last = step;
    }
    // The step that a click on label `hit` sets. "Off" clicked while off gives the last step again.
    int32_t afterClick(int32_t hit, int32_t step)
    {
        keep(step);
        keep(hit);
        return hit == 0 && step == 0 ? last : hit;
    }

private:
    int32_t last{0};
};
