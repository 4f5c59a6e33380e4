// Builds images byte by byte, valid ones and others.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace handmade {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t kBank = 0x38, kPreset = 0x22;

class Image {
public:
    explicit Image(bool isBigEndian = false) : bigEndian(isBigEndian) { }

    Image& word(std::uint32_t x)
    {
        put(records, x);
        return *this;
    }
    Image& zeros(std::size_t length)
    {
        records.resize(records.size() + length);
        return *this;
    }
    // Adds the header of a record; the caller adds its body.
    Image& head(std::uint32_t kind, std::uint32_t size, std::uint32_t preset)
    {
        ++count;
        return word(kind).word(size).word(preset);
    }
    Image& name(std::uint32_t preset, std::string text)
    {
        text.resize(24);
        head(0, 156, preset);
        records.insert(records.end(), text.begin(), text.end());
        return zeros(132);
    }
    Image& value(std::uint32_t preset, std::uint32_t id, float x)
    {
        std::uint32_t bits = 0;
        std::memcpy(&bits, &x, sizeof bits);
        return head(1, 20, preset).word(id).zeros(8).word(bits).zeros(4);
    }

    Bytes finish(std::uint8_t kind, std::uint32_t current = 0) const
    {
        Bytes image;
        put(image, 0x5A743436);
        image.push_back(kind);
        for (const std::uint32_t field :
             {0x01000100u, 58u, count, current, static_cast<std::uint32_t>(records.size())})
            put(image, field);
        image.resize(41);
        image.insert(image.end(), records.begin(), records.end());
        return image;
    }

private:
    void put(Bytes& bytes, std::uint32_t x) const
    {
        for (int i = 0; i < 4; ++i)
            bytes.push_back(static_cast<std::uint8_t>(x >> (bigEndian ? 24 - 8 * i : 8 * i)));
    }

    bool bigEndian;
    std::uint32_t count = 0;
    Bytes records;
};

// Values that differ between presets and seeds; one in eight is 0 or 1.
inline float someValue(unsigned seed, unsigned preset, unsigned id)
{
    const unsigned mixed = (seed * 24 + preset * 58 + id + 1) * 2654435761u;
    if (mixed % 8 == 0)
        return static_cast<float>(mixed / 8 % 2);
    return static_cast<float>(mixed >> 8) / 16777216.0f;
}

inline void addPreset(Image& image, unsigned seed, unsigned preset)
{
    image.name(preset, "Preset " + std::to_string(seed) + '-' + std::to_string(preset));
    for (unsigned id = 0; id < 58; ++id)
        image.value(preset, id, someValue(seed, preset, id));
}

inline Bytes goodBank(unsigned seed, std::uint32_t current, bool bigEndian = false)
{
    Image image(bigEndian);
    for (unsigned preset = 0; preset < 24; ++preset)
        addPreset(image, seed, preset);
    return image.finish(kBank, current);
}

inline Bytes goodPreset(unsigned seed, bool bigEndian = false)
{
    Image image(bigEndian);
    addPreset(image, seed, 0);
    return image.finish(kPreset);
}

// A host's state: a prefix of 8 bytes, then a bank's image.
inline Bytes stateOf(const Bytes& bank)
{
    Bytes state{0, 0, 0, 2, 0x36, 0x34, 0x74, 0x5A};
    state.insert(state.end(), bank.begin(), bank.end());
    return state;
}

}  // namespace handmade
