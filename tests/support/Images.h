// Builds the bytes of bank and preset images from presets.
#pragma once

#include "presets/BankFormat.h"

#include <cstdint>
#include <vector>

inline std::vector<std::uint8_t> imageOf(std::uint8_t kind, const std::vector<PresetSlot>& presets)
{
    const auto count = static_cast<std::int32_t>(presets.size());
    ImageWriter writer(kind, 0, count * (1 + static_cast<std::int32_t>(kPresetParamCount)),
                       presets.size() * (kPresetImageSize - kFileHeaderSize));
    for (std::int32_t i = 0; i < count; ++i) {
        const PresetSlot& preset = presets[static_cast<std::size_t>(i)];
        writer.appendName(i, preset);
        for (unsigned id = 0; id < kPresetParamCount; ++id)
            writer.appendValue(i, id, preset.values[id]);
    }
    return writer.take();
}
