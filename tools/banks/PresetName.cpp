#include "tools/banks/PresetName.h"

#include "platform/Utf8.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace tool {

namespace {

// C0, DEL and C1.
bool isControl(const char* character)
{
    const auto first = static_cast<unsigned char>(character[0]);
    return first < 0x20 || first == 0x7F
        || (first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0);
}

}  // namespace

std::string nameOf(const PresetSlot& preset)
{
    return std::string(preset.name, strnlen(preset.name, kPresetNameSize));
}

bool isPlainName(const char* name)
{
    const std::size_t length = strnlen(name, kPresetNameSize);
    return length < kPresetNameSize && platform::isUtf8(std::string(name, length))
        && std::all_of(name + length, name + kPresetNameSize, [](char c) { return c == 0; });
}

std::string printable(const std::string& text)
{
    std::string shown;
    for (std::size_t at = 0; at < text.size();) {
        const char* const character = text.c_str() + at;
        const std::size_t size = platform::characterSize(character);
        if (size > 0 && !isControl(character)) {
            shown.append(character, size);
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
