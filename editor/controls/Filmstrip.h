// Filmstrips: pictures whose frames are equally high and stacked from the top.
#pragma once

#include "vstgui/lib/cbitmap.h"

// The nearest of `steps` steps for a value from 0 to 1. Values outside and NaN give an end step.
int32_t stepOf(float value, int32_t steps);

// The height of one frame in whole pixels; 0 without a bitmap or frames.
VSTGUI::CCoord frameHeight(const VSTGUI::CBitmap* bitmap, int32_t frames);

// Draws the part of the bitmap that begins `top` pixels down and is as large as `rect`. Null draws
// nothing.
void drawFrame(VSTGUI::CDrawContext* context, VSTGUI::CBitmap* bitmap, const VSTGUI::CRect& rect,
               VSTGUI::CCoord top, float alpha = 1.f);
