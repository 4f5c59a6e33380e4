// Text on its way between UTF-8 and the system's 16-bit text.
#pragma once

#include <string>

namespace platform {

std::wstring toWide(const std::string& text);
std::string fromWide(const std::wstring& text);

}  // namespace platform
