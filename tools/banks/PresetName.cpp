// Names as text, and the little of UTF-8 that this takes.
#include "PresetName.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace tool {

namespace {

bool isControl(std::uint32_t character)
{
    return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

std::uint32_t characterAt(const std::string& text, std::size_t at, std::size_t size)
{
    const auto lead = static_cast<unsigned char>(text[at]);
    std::uint32_t character = size == 1 ? lead : lead & (0x7Fu >> size);
    for (std::size_t i = 1; i < size; ++i)
        character = character << 6 | (static_cast<unsigned char>(text[at + i]) & 0x3Fu);
    return character;
}

}  // namespace

std::string nameOf(const PresetSlot& preset)
{
    return std::string(preset.name, strnlen(preset.name, kPresetNameSize));
}

bool isPlainName(const char* name)
{
    const std::size_t length = strnlen(name, kPresetNameSize);
    return length < kPresetNameSize && isUtf8(std::string(name, length))
        && std::all_of(name + length, name + kPresetNameSize, [](char c) { return c == 0; });
}

std::size_t characterSize(const std::string& text, std::size_t at)
{
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead < 0x80)
        return 1;
    const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() - at < size)
        return 0;
    for (std::size_t i = 1; i < size; ++i)
        if ((static_cast<unsigned char>(text[at + i]) & 0xC0u) != 0x80u)
            return 0;
    const std::uint32_t character = characterAt(text, at, size);
    const bool overlong = (size == 3 && character < 0x800) || (size == 4 && character < 0x10000);
    const bool surrogate = character >= 0xD800 && character < 0xE000;
    return overlong || surrogate || character > 0x10FFFF ? 0 : size;
}

bool isUtf8(const std::string& text)
{
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t size = characterSize(text, at);
        if (size == 0)
            return false;
        at += size;
    }
    return true;
}

std::string printable(const std::string& text)
{
    std::string shown;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t size = characterSize(text, at);
        if (size > 0 && !isControl(characterAt(text, at, size))) {
            shown += text.substr(at, size);
            at += size;
            continue;
        }
        char escaped[8];
        std::snprintf(escaped, sizeof(escaped), "\\x%02X",
                      static_cast<unsigned>(static_cast<unsigned char>(text[at])));
        shown += escaped;
        ++at;
    }
    return shown;
}

std::string presetLabel(std::size_t index, const PresetSlot& preset)
{
    return std::to_string(index) + " \"" + printable(nameOf(preset)) + "\"";
}

}  // namespace tool
