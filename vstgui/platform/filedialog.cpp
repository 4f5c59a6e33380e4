#include "vstgui/platform/filedialog.h"

#include <algorithm>

namespace VSTGUI {

namespace {

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// An extension begins with a letter and has letters and digits only: "Air +1.5 dB" has none. A
// leading dot begins none either.
bool hasExtension(const std::string& path)
{
    const size_t slash = path.find_last_of("/\\");
    const size_t name = slash == std::string::npos ? 0 : slash + 1;
    const size_t dot = path.rfind('.');
    if (dot == std::string::npos || dot <= name || dot + 1 == path.size())
        return false;
    const auto first = path.begin() + static_cast<std::ptrdiff_t>(dot) + 1;
    return isLetter(*first) && std::all_of(first, path.end(), [](char c) {
        return isLetter(c) || (c >= '0' && c <= '9');
    });
}

}  // namespace

std::string FileDialogRequest::completed(const std::string& path) const
{
    if (kind != Kind::saveFile || !hasDefaultExtension || hasExtension(path))
        return path;
    const std::string extension = extensions[static_cast<size_t>(selectedExtension)].getExtension();
    return extension.empty() ? path : path + "." + extension;
}

}  // namespace VSTGUI
