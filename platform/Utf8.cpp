#include "platform/Utf8.h"

#include <algorithm>

namespace platform {

namespace {

bool isContinuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

}  // namespace

std::size_t characterSize(const char* text)
{
    const auto lead = static_cast<unsigned char>(*text);
    const std::size_t size = lead < 0x80 ? 1
        : lead < 0xC2                    ? 0
        : lead < 0xE0                    ? 2
        : lead < 0xF0                    ? 3
                                         : 4;
    if (lead > 0xF4)
        return 0;
    for (std::size_t i = 1; i < size; ++i)
        if (!isContinuation(text[i]))
            return 0;
    const auto second = static_cast<unsigned char>(size > 1 ? text[1] : 0);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool surrogate = lead == 0xED && second > 0x9F;
    const bool beyondUnicode = lead == 0xF4 && second > 0x8F;
    return overlong || surrogate || beyondUnicode ? 0 : size;
}

bool isUtf8(const std::string& text)
{
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t size = characterSize(text.c_str() + at);
        if (size == 0)
            return false;
        at += size;
    }
    return true;
}

std::string validUtf8(const char* text)
{
    std::string valid;
    for (const char* p = text ? text : ""; *p;) {
        const std::size_t size = characterSize(p);
        if (size > 0)
            valid.append(p, size);
        else
            valid += "\xEF\xBF\xBD";
        p += size > 0 ? size : 1;
    }
    return valid;
}

std::size_t nextCharacter(const std::string& text, std::size_t offset)
{
    if (offset >= text.size())
        return text.size();
    ++offset;
    while (offset < text.size() && isContinuation(text[offset]))
        ++offset;
    return offset;
}

std::size_t previousCharacter(const std::string& text, std::size_t offset)
{
    if (offset == 0)
        return 0;
    --offset;
    while (offset > 0 && isContinuation(text[offset]))
        --offset;
    return offset;
}

std::size_t countCharacters(const std::string& text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return !isContinuation(c); }));
}

std::size_t countUtf16(const std::string& text)
{
    // A character of four bytes has two units, others have one.
    const auto fourBytes = std::count_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0xF0; });
    return countCharacters(text) + static_cast<std::size_t>(fourBytes);
}

std::size_t fittingSize(const char* text, std::size_t limit)
{
    constexpr std::size_t kMaxContinuations = 3;  // bytes of a character after its first
    std::size_t size = 0;
    while (size <= limit && text[size])
        ++size;
    if (size <= limit)
        return size;
    // The first byte of the character that the limit cuts.
    std::size_t first = limit;
    while (first > 0 && first + kMaxContinuations > limit && isContinuation(text[first]))
        --first;
    return static_cast<unsigned char>(text[first]) >= 0xC0 ? first : limit;
}

}  // namespace platform
