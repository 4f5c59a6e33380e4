// ProgramChooser: a file dialog that the program zenity or kdialog shows.
#pragma once

#include "platform/posix/ChildProcess.h"
#include "vstgui/platform/x11/filechooser.h"

namespace VSTGUI {
namespace X11 {

class ProgramChooser : public FileChooser {
public:
    // In front of the window `parent`. Null if the program is not installed.
    static std::unique_ptr<FileChooser> openZenity(const FileDialogRequest& request,
                                                   unsigned long parent);
    static std::unique_ptr<FileChooser> openKdialog(const FileDialogRequest& request,
                                                    unsigned long parent);

    State poll(std::vector<std::string>& chosen) override;

private:
    explicit ProgramChooser(const std::vector<std::string>& command)
        : process(platform::ChildProcess::Role::Desktop, command)
    {
    }
    static std::unique_ptr<FileChooser> start(const std::vector<std::string>& command);

    platform::ChildProcess process;
    std::string output;
};

}  // namespace X11
}  // namespace VSTGUI
