// Keys and buttons as Windows reports them, in the toolkit's words.
#pragma once

#include "vstgui/lib/cbuttonstate.h"
#include "vstgui/lib/vstkeycode.h"

#include <windows.h>

namespace VSTGUI {

// The key of a WM_KEYDOWN or WM_KEYUP with the modifiers that are held. Keys that only make
// characters have no virtual key.
VstKeyCode keyCodeFrom(WPARAM virtualKey);

// Buttons and modifiers of a mouse message. The MK_ word says all but Alt.
int32_t buttonsFrom(WORD mouseKeys);
int32_t modifiersFrom(WORD mouseKeys);

// Buttons and modifiers as they are at this moment.
int32_t currentButtons();

// The button that a message is about, 0 for other messages; and whether the message order says that
// it is down.
int32_t buttonOf(UINT message, WPARAM wParam);
bool isHeld(int32_t button);

}  // namespace VSTGUI
