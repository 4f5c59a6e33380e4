#include "vstgui/platform/x11/x11filedialog.h"

#include "vstgui/platform/x11/portalchooser.h"
#include "vstgui/platform/x11/programchooser.h"

#include <filesystem>

namespace VSTGUI {
namespace X11 {

namespace {

constexpr uint32_t kPeriod = 20;  // ms
constexpr size_t kReplace = 0;    // the first button of the question

}  // namespace

X11FileDialog::X11FileDialog(X11Frame& frame, const FileDialogRequest& request,
                             const FilesChosen& done)
    : frame(frame), request(request), done(done),
      timer(new CVSTGUITimer([this](CVSTGUITimer*) { poll(); }, kPeriod), false)
{
}

X11FileDialog::~X11FileDialog()
{
    timer->stop();
}

bool X11FileDialog::openNext()
{
    const std::function<std::unique_ptr<FileChooser>()> providers[] = {
        [this] { return PortalChooser::open(request, frame.getTopLevelWindow()); },
        [this] { return ProgramChooser::openZenity(request, frame.getTopLevelWindow()); },
        [this] { return ProgramChooser::openKdialog(request, frame.getTopLevelWindow()); },
    };
    chooser = nullptr;
    while (!chooser && nextProvider < std::size(providers))
        chooser = providers[nextProvider++]();
    return chooser != nullptr;
}

void X11FileDialog::poll()
{
    const CBaseObjectGuard guard(this);
    if (question) {
        if (const auto button = question->answer())
            finish(*button == kReplace ? paths : std::vector<std::string>());
        return;
    }
    switch (chooser->poll(paths)) {
    case FileChooser::State::open:
        break;
    case FileChooser::State::unavailable:
        if (!openNext())
            frame.reportNoFileDialog(request);
        break;
    case FileChooser::State::ended:
        chosen();
        break;
    }
}

void X11FileDialog::chosen()
{
    chooser = nullptr;
    for (std::string& path : paths) {
        const std::string written = request.completed(path);
        std::error_code ignored;
        if (written != path && std::filesystem::exists(written, ignored))
            question = frame.ask(std::filesystem::path(written).filename().string()
                                     + " exists already.\nShall it be replaced?",
                                 request.title, {"Replace", "Cancel"});
        path = written;
    }
    if (!question)
        finish(paths);
}

// The caller has a guard for this object. The callee may close the frame.
void X11FileDialog::finish(const std::vector<std::string>& files)
{
    const std::vector<std::string> result = files;
    const FilesChosen call = std::move(done);
    timer->stop();
    question = nullptr;
    frame.cancelFileDialog();
    call(result);
}

}  // namespace X11
}  // namespace VSTGUI
