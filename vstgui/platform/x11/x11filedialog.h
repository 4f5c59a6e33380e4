// X11FileDialog: asks for files through the desktop's portal, zenity or kdialog, whichever is the
// first to answer.
#pragma once

#include "vstgui/platform/x11/filechooser.h"
#include "vstgui/platform/x11/x11frame.h"
#include "vstgui/platform/x11/x11message.h"

#include <memory>

namespace VSTGUI {
namespace X11 {

// A timer asks the dialog for its answer, so that the host's loop goes on. Destroying the object
// closes the dialog.
class X11FileDialog : public CBaseObject {
public:
    // The frame must outlive the object.
    X11FileDialog(X11Frame& frame, const FileDialogRequest& request, const FilesChosen& done);

    // Opens the next dialog there is. False if there is none.
    bool openNext();

protected:
    ~X11FileDialog() override;

private:
    void poll();
    // Asks before a file is replaced that the desktop's dialog has not asked about.
    void chosen();
    void finish(const std::vector<std::string>& files);

    X11Frame& frame;
    const FileDialogRequest request;
    FilesChosen done;
    size_t nextProvider{0};
    std::unique_ptr<FileChooser> chooser;
    std::vector<std::string> paths;
    std::unique_ptr<X11Message> question;
    SharedPointer<CVSTGUITimer> timer;
};

}  // namespace X11
}  // namespace VSTGUI
