// Conversion of X11's keys and mouse buttons to the toolkit's.
#pragma once

#include "vstgui/lib/cbuttonstate.h"
#include "vstgui/lib/vstkeycode.h"

#include <X11/Xlib.h>
#include <string>

namespace VSTGUI {
namespace X11 {

// Buttons and modifiers from an event's state.
int32_t buttonsOfState(unsigned int state);
// The button with X11's number; 0 for the wheel and unknown buttons.
int32_t buttonOfNumber(unsigned int number);

struct KeyInput {
    KeySym symbol{0};
    std::string text;  // UTF-8, without control characters
    VstKeyCode code{0, 0, 0};
};

// With an input context `text` is what it composes; without one, and for releases, the key's own.
KeyInput readKey(XKeyEvent& event, XIC context);

}  // namespace X11
}  // namespace VSTGUI
