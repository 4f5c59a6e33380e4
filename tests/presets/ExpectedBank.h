// A simple reference reader of images, independent of the code under test; values are compared as
// bits.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace expected {

using Bytes = std::vector<std::uint8_t>;
using Preset = std::array<std::uint8_t, 256>;  // 24 bytes of name, 58 floats
using Bank = std::array<Preset, 24>;

inline std::uint32_t word(const Bytes& bytes, std::size_t at, bool bigEndian)
{
    std::uint32_t result = 0;
    for (std::size_t i = 0; i < 4; ++i)
        result = result * 256 + bytes[at + (bigEndian ? i : 3 - i)];
    return result;
}

inline std::int64_t number(const Bytes& bytes, std::size_t at, bool bigEndian)
{
    const std::int64_t x = word(bytes, at, bigEndian);
    return x < 0x80000000 ? x : x - 0x100000000;
}

// Positive floats have the order of their bits; of the negative ones only -0 is in 0 to 1.
inline bool liesInZeroToOne(std::uint32_t bits)
{
    return bits <= 0x3F800000 || bits == 0x80000000;
}

// The part of the controller that images change. Each load returns how often it selects a preset.
struct Controller {
    Bank bank{};
    Preset reset{};
    std::size_t selected = 0;

    // Loads an image from a file or the store; `kind` is the one requested: 0x38 or 0x22.
    int loadImage(const Bytes& image, std::uint8_t kind, bool isFile, bool reversed)
    {
        constexpr std::uint32_t kMagic = 0x5A743436;
        if (image.size() < 5)
            return 0;
        const bool bigEndian = word(image, 0, true) == kMagic;
        if (!bigEndian && word(image, 0, false) != kMagic)
            return 0;
        int selections = 0;
        if (image[4] == kind && image.size() >= 41) {
            const bool swapped = bigEndian != reversed;
            const auto room = static_cast<std::int64_t>(image.size()) - 41;
            const std::int64_t payload = isFile ? number(image, 21, swapped) : room;
            if (payload >= 0 && payload <= room)
                selections += takeImage(image, 0, 41 + payload, kind == 0x38, swapped);
        }
        if (!isFile || kind != 0x38)
            return selections;
        selected = 0;
        return selections + 1;
    }

    // `state` holds the previous state; a shorter one replaces only its beginning.
    int loadState(const Bytes& given, Bytes& state)
    {
        std::copy_n(given.begin(), std::min(given.size(), state.size()), state.begin());
        return takeImage(state, 8, static_cast<std::int64_t>(state.size()), true, false);
    }

private:
    int takeImage(const Bytes& bytes, std::size_t header, std::int64_t end, bool isBank,
                  bool bigEndian)
    {
        const std::int64_t count = number(bytes, header + 13, bigEndian);
        const std::int64_t current = number(bytes, header + 17, bigEndian);
        if (!isBank && count < 0)
            bank[selected] = reset;
        Bank next = bank;
        if (!isBank)
            next[selected] = reset;
        std::size_t at = header + 41;
        for (std::int64_t i = 0; i < count; ++i) {
            const std::int64_t left = end - static_cast<std::int64_t>(at) - 12;
            if (left < 0)
                return 0;
            const std::int64_t size = number(bytes, at + 4, bigEndian);
            const std::int64_t index = number(bytes, at + 8, bigEndian);
            if (size < 0 || size > left)
                return 0;
            Preset* preset = &next[selected];
            if (isBank)
                preset =
                    index >= 0 && index < 24 ? &next[static_cast<std::size_t>(index)] : nullptr;
            if (preset && !takeRecord(bytes, at, size, bigEndian, isBank, *preset))
                return 0;
            at += 12 + static_cast<std::size_t>(size);
        }
        if (count < 0)
            return 0;
        bank = next;
        if (isBank)
            selected = current >= 0 && current < 24 ? static_cast<std::size_t>(current) : 0;
        return 1;
    }

    // False for a value that is not in 0 to 1. In a bank a name first resets the preset.
    bool takeRecord(const Bytes& bytes, std::size_t at, std::int64_t size, bool bigEndian,
                    bool isBank, Preset& preset) const
    {
        const std::int64_t kind = number(bytes, at, bigEndian);
        if (kind == 0 && size >= 24) {
            if (isBank)
                preset = reset;
            std::copy_n(&bytes[at + 12], 24, preset.begin());
        }
        if (kind != 1 || size < 16)
            return true;
        const std::int64_t id = number(bytes, at + 12, bigEndian);
        if (id < 0 || id > 57)
            return true;
        for (std::size_t i = 0; i < 4; ++i)
            preset[24 + 4 * static_cast<std::size_t>(id) + i] =
                bytes[at + 24 + (bigEndian ? 3 - i : i)];
        return liesInZeroToOne(word(bytes, at + 24, bigEndian));
    }
};

}  // namespace expected
