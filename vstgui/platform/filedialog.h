// FileDialogRequest: the settings of a file dialog. Text and paths are UTF-8.
#pragma once

#include "vstgui/lib/cfileextension.h"

#include <functional>
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
    // The selected extension is appended to a name to save that has none.
    bool hasDefaultExtension{false};
    bool allowSeveral{false};

    // The path that is meant by the one that the user has chosen.
    std::string completed(const std::string& path) const;
};

// Receives the chosen paths; none after a cancel.
using FilesChosen = std::function<void(const std::vector<std::string>& paths)>;

}  // namespace VSTGUI
