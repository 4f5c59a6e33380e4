// The system's own text box for typing in a frame, where there is one.
#pragma once

#include "vstgui/lib/platform/iplatformtextedit.h"

namespace VSTGUI {
class CFrame;
}

// Opens a box with the callback's text, all selected, and the keyboard focus. The caller owns it.
// Null: use the toolkit's box.
VSTGUI::IPlatformTextEdit* createSystemBox(VSTGUI::CFrame& frame,
                                           VSTGUI::IPlatformTextEditCallback* textEdit);
