// Sizes of the editor's four layouts, in pixels.
#pragma once

#include "vstgui/lib/crect.h"

constexpr int kEditorHeight = 505;

// 0: the equalisers alone; 1: with the pre-amplifiers; 2: with the secondary equalisers; 3: with
// both.
constexpr int layoutModeOf(int preampOn, int secondaryOn)
{
    return preampOn + 2 * secondaryOn;
}

constexpr int editorWidth(int layoutMode)
{
    return layoutMode == 0 ? 394 : layoutMode == 3 ? 894 : 644;
}

// The hint's place in layouts 0 to 2, and in layout 3. In layout 0 it lies outside the window.
const VSTGUI::CRect kHintRect(395, 488, 610, 504);
const VSTGUI::CRect kWideHintRect(520, 488, 735, 504);
