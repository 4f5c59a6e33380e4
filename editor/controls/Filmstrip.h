// Filmstrips: pictures whose frames are equally high and stacked from the top.
#pragma once

#include "vstgui/lib/cbitmap.h"

// The step nearest to a value from 0 to 1, of so many. Values outside, and what is not a number,
// give an end step.
int32_t stepOf(float value, int32_t steps);

// Whole pixels; 0 without a picture or frames.
VSTGUI::CCoord frameHeight(const VSTGUI::CBitmap* bitmap, int32_t frames);

// Draws the part that begins `top` pixels down, as large as the rectangle. Null draws nothing.
void drawFrame(VSTGUI::CDrawContext* context, VSTGUI::CBitmap* bitmap, const VSTGUI::CRect& rect,
               VSTGUI::CCoord top, float alpha = 1.f);
