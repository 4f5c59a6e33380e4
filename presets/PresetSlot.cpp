#include "presets/PresetSlot.h"

#include "platform/Utf8.h"

#include <cstring>

void setValue(PresetSlot& slot, unsigned id, float value)
{
    if (id < kPresetParamCount)
        slot.values[id] = value;
}

void setName(PresetSlot& slot, const char* text)
{
    std::memset(slot.name, 0, kPresetNameSize);
    std::memcpy(slot.name, text, platform::fittingSize(text, kPresetNameSize - 1));
}
