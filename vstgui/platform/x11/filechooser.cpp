#include "vstgui/platform/x11/filechooser.h"

#include <filesystem>

namespace VSTGUI {
namespace X11 {

std::string startFolder(const FileDialogRequest& request)
{
    std::error_code ignored;
    if (request.initialDirectory.empty()
        || !std::filesystem::is_directory(request.initialDirectory, ignored))
        return {};
    std::string folder = request.initialDirectory;
    if (folder.back() != '/')
        folder += '/';
    return folder;
}

std::vector<FileFilter> filtersOf(const FileDialogRequest& request)
{
    std::vector<FileFilter> filters;
    FileFilter all{"All supported files", {}};
    for (const CFileExtension& extension : request.extensions) {
        const auto& first = request.extensions[static_cast<size_t>(request.selectedExtension)];
        all.patterns.push_back(std::string("*.") + extension.getExtension());
        filters.insert(&extension == &first ? filters.begin() : filters.end(),
                       {extension.getDescription(), {all.patterns.back()}});
    }
    if (filters.size() > 1)
        filters.push_back(all);
    return filters;
}

}  // namespace X11
}  // namespace VSTGUI
