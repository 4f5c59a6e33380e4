// The gesture of every latching button: a press of the left mouse button turns it over.
#pragma once

#include "vstgui/lib/controls/ccontrol.h"

// 1 if the value rounds to 0, else 0. The listener hears nothing of it.
void toggle(VSTGUI::CControl& control);

// With the left button: toggles, and gives the listener one whole gesture. The press is all the
// control needs.
VSTGUI::CMouseEventResult pressToToggle(VSTGUI::CControl& control,
                                        const VSTGUI::CButtonState& buttons);
