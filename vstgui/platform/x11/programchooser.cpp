#include "vstgui/platform/x11/programchooser.h"

#include <sstream>

namespace VSTGUI {
namespace X11 {

namespace {

using Kind = FileDialogRequest::Kind;

// The exit code of both programs after a cancel; larger ones mean that no dialog was shown.
constexpr int kCancelled = 1;

std::string joined(const std::vector<std::string>& patterns)
{
    std::string list;
    for (const std::string& pattern : patterns)
        list += (list.empty() ? "" : " ") + pattern;
    return list;
}

std::vector<std::string> zenityCommand(const FileDialogRequest& request, unsigned long parent)
{
    std::vector<std::string> command{"zenity", "--file-selection", "--title=" + request.title,
                                     "--attach=" + std::to_string(parent)};
    if (request.kind == Kind::saveFile) {
        command.emplace_back("--save");
        command.emplace_back("--confirm-overwrite");
    } else if (request.kind == Kind::selectDirectory) {
        command.emplace_back("--directory");
    }
    if (request.allowSeveral) {
        command.emplace_back("--multiple");
        command.emplace_back("--separator=\n");
    }
    const std::string start = startFolder(request) + request.defaultSaveName;
    if (!start.empty())
        command.push_back("--filename=" + start);
    for (const FileFilter& filter : filtersOf(request))
        command.push_back("--file-filter=" + filter.description + " | " + joined(filter.patterns));
    return command;
}

std::vector<std::string> kdialogCommand(const FileDialogRequest& request, unsigned long parent)
{
    std::vector<std::string> command{"kdialog", "--title", request.title, "--attach",
                                     std::to_string(parent)};
    if (request.allowSeveral) {
        command.emplace_back("--multiple");
        command.emplace_back("--separate-output");
    }
    const char* action = request.kind == Kind::saveFile ? "--getsavefilename"
        : request.kind == Kind::selectDirectory         ? "--getexistingdirectory"
                                                        : "--getopenfilename";
    command.emplace_back(action);
    const std::string start = startFolder(request) + request.defaultSaveName;
    // A name must not look like an option.
    const bool option = start.empty() || start.front() == '-';
    command.push_back(option ? "./" + start : start);
    std::string list;
    for (const FileFilter& filter : filtersOf(request))
        list +=
            (list.empty() ? "" : "\n") + filter.description + " (" + joined(filter.patterns) + ")";
    if (!list.empty() && request.kind != Kind::selectDirectory)
        command.push_back(list);
    return command;
}

}  // namespace

std::unique_ptr<FileChooser> ProgramChooser::start(const std::vector<std::string>& command)
{
    std::unique_ptr<ProgramChooser> chooser(new ProgramChooser(command));
    if (!chooser->process.started())
        return nullptr;
    return chooser;
}

std::unique_ptr<FileChooser> ProgramChooser::openZenity(const FileDialogRequest& request,
                                                        unsigned long parent)
{
    return start(zenityCommand(request, parent));
}

std::unique_ptr<FileChooser> ProgramChooser::openKdialog(const FileDialogRequest& request,
                                                         unsigned long parent)
{
    return start(kdialogCommand(request, parent));
}

FileChooser::State ProgramChooser::poll(std::vector<std::string>& chosen)
{
    if (process.readOutput(output) || !process.hasEnded())
        return State::open;
    const int exitCode = process.wait();
    if (exitCode > kCancelled)
        return State::unavailable;
    std::istringstream lines(output);
    for (std::string line; exitCode == 0 && std::getline(lines, line);) {
        if (!line.empty() && line.front() == '/')
            chosen.push_back(line);
    }
    return State::ended;
}

}  // namespace X11
}  // namespace VSTGUI
