// The text box that the system's window of a frame gets for typing a text.
#pragma once

#include "vstgui/lib/platform/iplatformtextedit.h"

namespace VSTGUI {
class CFrame;
}

// Shows the callback's text, all selected, and takes the keyboard. The caller owns it. Null: the
// toolkit's own box is to be used.
VSTGUI::IPlatformTextEdit* createSystemBox(VSTGUI::CFrame& frame,
                                           VSTGUI::IPlatformTextEditCallback* textEdit);
