// Toggling of latching buttons by a press of the left mouse button.
#pragma once

#include "vstgui/lib/controls/ccontrol.h"

// Sets the value to 1 if it rounds to 0, else to 0. Does not call the listener.
void toggle(VSTGUI::CControl& control);

// With the left button: toggles, and reports one whole gesture to the listener. The control needs
// no release then.
VSTGUI::CMouseEventResult pressToToggle(VSTGUI::CControl& control,
                                        const VSTGUI::CButtonState& buttons);
