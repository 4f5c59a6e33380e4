// Conversion between UTF-8 and the system's UTF-16; invalid text gives replacement characters.
#pragma once

#include <string>

namespace platform {

std::wstring toWide(const std::string& text);
std::string fromWide(const std::wstring& text);

}  // namespace platform
