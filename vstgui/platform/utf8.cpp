// Checking and stepping through UTF-8.
#include "vstgui/platform/utf8.h"

namespace VSTGUI {

namespace {

bool isContinuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// Length of the valid sequence at p, which ends with a zero byte; 0 when there is none.
size_t sequenceLength(const char* p)
{
    const auto lead = static_cast<unsigned char>(*p);
    const size_t length = lead < 0x80 ? 1 : lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (length == 0 || lead > 0xF4)
        return 0;
    for (size_t i = 1; i < length; ++i) {
        if (!isContinuation(p[i]))
            return 0;
    }
    const auto second = static_cast<unsigned char>(length > 1 ? p[1] : 0);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool surrogate = lead == 0xED && second > 0x9F;
    const bool beyondUnicode = lead == 0xF4 && second > 0x8F;
    return overlong || surrogate || beyondUnicode ? 0 : length;
}

}  // namespace

std::string validUtf8(const char* text)
{
    std::string valid;
    for (const char* p = text ? text : ""; *p;) {
        const size_t length = sequenceLength(p);
        if (length > 0)
            valid.append(p, length);
        else
            valid += "\xEF\xBF\xBD";
        p += length > 0 ? length : 1;
    }
    return valid;
}

size_t nextCharacter(const std::string& text, size_t offset)
{
    if (offset >= text.size())
        return text.size();
    ++offset;
    while (offset < text.size() && isContinuation(text[offset]))
        ++offset;
    return offset;
}

size_t previousCharacter(const std::string& text, size_t offset)
{
    if (offset == 0)
        return 0;
    --offset;
    while (offset > 0 && isContinuation(text[offset]))
        --offset;
    return offset;
}

size_t countCharacters(const std::string& text)
{
    size_t count = 0;
    for (char c : text)
        count += isContinuation(c) ? 0 : 1;
    return count;
}

}  // namespace VSTGUI
