// UTF-8, walked by characters (code points).
#pragma once

#include <cstddef>
#include <string>

namespace platform {

// Bytes of the well-formed character at the start of `text`, which ends with a zero byte; 0 where
// there is none.
std::size_t characterSize(const char* text);
bool isUtf8(const std::string& text);
// Bytes that are no UTF-8 become U+FFFD. Null counts as empty.
std::string validUtf8(const char* text);

// Byte offsets of the neighbouring characters in valid UTF-8; they stop at the ends.
std::size_t nextCharacter(const std::string& text, std::size_t offset);
std::size_t previousCharacter(const std::string& text, std::size_t offset);

// Of valid UTF-8.
std::size_t countCharacters(const std::string& text);
std::size_t countUtf16(const std::string& text);  // in 16-bit units

// How many bytes of `text` to keep, at most `most`, so that no character is cut. Looks no further
// than the byte behind those. What is not UTF-8 is cut where it is full.
std::size_t fittingSize(const char* text, std::size_t most);

}  // namespace platform
