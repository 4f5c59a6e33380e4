// UTF-8 by code points.
#pragma once

#include <cstddef>
#include <string>

namespace VSTGUI {

// Bytes that are no UTF-8 become U+FFFD. Null counts as empty.
std::string validUtf8(const char* text);

// Byte offsets of the neighbouring code points in valid UTF-8; they stop at the ends.
size_t nextCharacter(const std::string& text, size_t offset);
size_t previousCharacter(const std::string& text, size_t offset);
size_t countCharacters(const std::string& text);

}  // namespace VSTGUI
