// The clickable labels around a stepped dial.
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
