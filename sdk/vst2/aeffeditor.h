// AEffEditor: the editor of a VST 2 effect, called by the effect's dispatcher.
#pragma once

#include "sdk/vst2/vst2interface.h"

class AEffEditor {
public:
    virtual ~AEffEditor() = default;

    // Points `rect` at the size, which stays valid until the next call. False: no size is known.
    virtual bool getRect(ERect** rect) = 0;
    // Opens as a child of the host's window. False if it cannot be shown.
    virtual bool open(void* parentWindow) = 0;
    virtual void close() = 0;
    // `character` or `virtualKey` is 0 where there is none; `modifiers` are VstModifierKey bits.
    // True when the key was used.
    virtual bool onKeyDown(VstInt32 character, VstInt32 virtualKey, VstInt32 modifiers) = 0;
    virtual bool onKeyUp(VstInt32 character, VstInt32 virtualKey, VstInt32 modifiers) = 0;
    virtual bool onWheel(float distance) = 0;
    // 0 circular, 1 relative circular, 2 linear.
    virtual bool setKnobMode(VstInt32 mode) = 0;
};
