// X11FileDialog: the desktop's own file dialog, through its helper program.
#pragma once

#include "vstgui/platform/x11/x11connection.h"
#include "vstgui/platform/x11/x11frame.h"

#include <memory>
#include <string>
#include <vector>

namespace VSTGUI {
namespace X11 {

class ChildProcess;

// The helper's command line, program first; empty for a helper that is unknown.
std::vector<std::string> fileDialogCommand(const std::string& helper,
                                           const FileDialogRequest& request);

class X11FileDialog : private X11Modal {
public:
    explicit X11FileDialog(X11Frame& f) : frame(&f) { }

    // Waits for the user; empty when nothing was chosen. Without a helper a message names those
    // that there are.
    std::vector<std::string> run(const FileDialogRequest& request);
    void cancel();

private:
    void pressedOutside() override { }

    SharedPointer<X11Frame> frame;
    ChildProcess* child{nullptr};
};

}  // namespace X11
}  // namespace VSTGUI
