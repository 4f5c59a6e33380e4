// FileChooser: a file dialog of the desktop that is open.
#pragma once

#include "vstgui/platform/filedialog.h"

#include <memory>

namespace VSTGUI {
namespace X11 {

class FileChooser {
public:
    enum class State { open, ended, unavailable };

    // Closes the dialog.
    virtual ~FileChooser() = default;
    // Never waits. Once it has ended, `chosen` holds the paths, none after a cancel. If it is
    // unavailable, it has shown nothing.
    virtual State poll(std::vector<std::string>& chosen) = 0;
};

// The folder to start in, with a slash at its end; empty if the requested one does not exist.
std::string startFolder(const FileDialogRequest& request);

struct FileFilter {
    std::string description;
    std::vector<std::string> patterns;
};
// The selected extension first, then the others, then all of them together.
std::vector<FileFilter> filtersOf(const FileDialogRequest& request);

}  // namespace X11
}  // namespace VSTGUI
