#include "vstgui/platform/filedialog.h"

namespace VSTGUI {

namespace {

bool hasExtension(const std::string& path)
{
    const size_t slash = path.find_last_of("/\\");
    const size_t name = slash == std::string::npos ? 0 : slash + 1;
    const size_t dot = path.rfind('.');
    // A leading dot begins no extension.
    return dot != std::string::npos && dot > name;
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
