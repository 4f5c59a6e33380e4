// PresetSlot: its two setters.
#include "PresetSlot.h"

#include <cstring>

void setValue(PresetSlot& slot, unsigned id, float value)
{
    if (id < kPresetParamCount)
        slot.values[id] = value;
}

void setName(PresetSlot& slot, const char* text)
{
    // strncpy fills what is left with zeros.
    std::strncpy(slot.name, text, kPresetNameSize - 1);
    slot.name[kPresetNameSize - 1] = '\0';
}
