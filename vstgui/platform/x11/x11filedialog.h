// X11FileDialog: the desktop's file dialog, shown by the program kdialog or zenity.
#pragma once

#include "vstgui/platform/x11/x11connection.h"
#include "vstgui/platform/x11/x11frame.h"

#include <memory>
#include <string>
#include <vector>

namespace platform {
class ChildProcess;
}

namespace VSTGUI {
namespace X11 {

class X11FileDialog : private X11Modal {
public:
    explicit X11FileDialog(X11Frame& frame) : frame(&frame) { }

    // Waits for the user; empty when nothing was chosen. If neither program is installed, shows a
    // message that names them.
    std::vector<std::string> run(const FileDialogRequest& request);
    void cancel();

private:
    void pressedOutside() override { }

    SharedPointer<X11Frame> frame;
    platform::ChildProcess* child{nullptr};
};

}  // namespace X11
}  // namespace VSTGUI
