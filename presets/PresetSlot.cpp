// PresetSlot: its two setters.
#include "PresetSlot.h"

#include <cstring>

namespace {

// How much of a text of 24 bytes or more fits: to the end of the last whole character.
std::size_t fittingSize(const char* text)
{
    constexpr std::size_t kMost = kPresetNameSize - 1;
    constexpr std::size_t kFollowing = 3;  // bytes behind a character's first, at most
    const auto follows = [text](std::size_t at) {
        return (static_cast<unsigned char>(text[at]) & 0xC0u) == 0x80u;
    };
    std::size_t first = kMost;
    while (first > kMost - kFollowing && follows(first))
        --first;
    // What is not UTF-8 is cut where it is full.
    return static_cast<unsigned char>(text[first]) >= 0xC0u ? first : kMost;
}

}  // namespace

void setValue(PresetSlot& slot, unsigned id, float value)
{
    if (id < kPresetParamCount)
        slot.values[id] = value;
}

void setName(PresetSlot& slot, const char* text)
{
    std::size_t size = 0;
    while (size < kPresetNameSize && text[size])
        ++size;
    if (size == kPresetNameSize)
        size = fittingSize(text);
    std::memset(slot.name, 0, kPresetNameSize);
    std::memcpy(slot.name, text, size);
}
