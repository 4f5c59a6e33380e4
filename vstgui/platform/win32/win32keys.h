// Conversion of Windows' keys and mouse buttons to the toolkit's.
#pragma once

#include "vstgui/lib/cbuttonstate.h"
#include "vstgui/lib/vstkeycode.h"

#include <windows.h>

namespace VSTGUI {

// The key of a WM_KEYDOWN or WM_KEYUP with the modifiers held. `virt` is 0 for keys that only
// produce characters.
VstKeyCode keyCodeFrom(WPARAM virtualKey);

// Buttons and modifiers of a mouse message, from its MK_ bits; Alt, which has none, is read from
// the keyboard.
int32_t buttonsFrom(WORD mouseKeys);
int32_t modifiersFrom(WORD mouseKeys);

// Buttons and modifiers held at the moment.
int32_t currentButtons();

// buttonOf: the button that a message is about, 0 for other messages. isHeld: whether that button
// is down after the messages handled so far.
int32_t buttonOf(UINT message, WPARAM wParam);
bool isHeld(int32_t button);

}  // namespace VSTGUI
