// FileDialogRequest: the settings of a file dialog. Text and paths are UTF-8.
#pragma once

#include "vstgui/lib/cfileextension.h"

#include <string>
#include <vector>

namespace VSTGUI {

struct FileDialogRequest {
    enum class Kind { openFile, saveFile, selectDirectory };

    Kind kind{Kind::openFile};
    std::string title;
    std::string initialDirectory;  // ignored when empty or missing
    std::string defaultSaveName;
    // If there are several, the dialog also offers a filter for all of them together.
    std::vector<CFileExtension> extensions;
    int32_t selectedExtension{0};  // index into extensions
    bool allowSeveral{false};
};

}  // namespace VSTGUI
