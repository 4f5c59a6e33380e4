// Characters (code points) of UTF-8 text.
#pragma once

#include <cstddef>
#include <string>

namespace platform {

// The number of bytes of the character at the start of `text`, which ends with a zero byte; 0 if it
// is not well-formed.
std::size_t characterSize(const char* text);
bool isUtf8(const std::string& text);
// Bytes that are not UTF-8 become U+FFFD. Null counts as empty.
std::string validUtf8(const char* text);

// Byte offsets of the neighbouring characters in valid UTF-8; they stop at the ends.
std::size_t nextCharacter(const std::string& text, std::size_t offset);
std::size_t previousCharacter(const std::string& text, std::size_t offset);

// Of valid UTF-8.
std::size_t countCharacters(const std::string& text);
std::size_t countUtf16(const std::string& text);  // in 16-bit units

// How many bytes of `text` to keep, at most `limit`, so that no character is cut; text that is not
// UTF-8 is cut after `limit` bytes. Reads at most `limit` + 1 bytes.
std::size_t fittingSize(const char* text, std::size_t limit);

}  // namespace platform
