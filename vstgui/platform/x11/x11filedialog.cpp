#include "vstgui/platform/x11/x11filedialog.h"

#include "platform/posix/ChildProcess.h"

#include <filesystem>
#include <optional>
#include <sstream>

namespace VSTGUI {
namespace X11 {

namespace {

constexpr int kWaitPeriod = 50;  // ms

using Kind = FileDialogRequest::Kind;

// With a slash at the end, so that the programs take it for a folder.
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

std::string allPatterns(const FileDialogRequest& request)
{
    std::string patterns;
    for (const CFileExtension& extension : request.extensions)
        patterns += std::string(patterns.empty() ? "*." : " *.") + extension.getExtension();
    return patterns;
}

// The selected extension first, then the others, then all of them together.
std::vector<std::pair<std::string, std::string>> filters(const FileDialogRequest& request)
{
    std::vector<std::pair<std::string, std::string>> list;
    for (const CFileExtension& extension : request.extensions) {
        const auto& first = request.extensions[static_cast<size_t>(request.selectedExtension)];
        const std::pair<std::string, std::string> filter(
            extension.getDescription(), std::string("*.") + extension.getExtension());
        list.insert(&extension == &first ? list.begin() : list.end(), filter);
    }
    if (list.size() > 1)
        list.emplace_back("All supported files", allPatterns(request));
    return list;
}

std::vector<std::string> zenityCommand(const FileDialogRequest& request)
{
    std::vector<std::string> command{"zenity", "--file-selection", "--title=" + request.title};
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
    for (const auto& [description, pattern] : filters(request))
        command.push_back("--file-filter=" + description + " | " + pattern);
    return command;
}

std::vector<std::string> kdialogCommand(const FileDialogRequest& request)
{
    std::vector<std::string> command{"kdialog", "--title", request.title};
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
    std::string filter;
    for (const auto& [description, pattern] : filters(request))
        filter += (filter.empty() ? "" : "\n") + description + " (" + pattern + ")";
    if (!filter.empty() && request.kind != Kind::selectDirectory)
        command.push_back(filter);
    return command;
}

}  // namespace

std::vector<std::string> X11FileDialog::run(const FileDialogRequest& request)
{
    std::optional<platform::ChildProcess> process;
    for (const auto& command : {kdialogCommand(request), zenityCommand(request)}) {
        if (!process || !process->started())
            process.emplace(platform::ChildProcess::Role::Desktop, command);
    }
    if (!process->started()) {
        frame->showMessage("Files are chosen with the program zenity or kdialog,\n"
                           "and neither of them is installed.\n"
                           "Install one of the two to load and save files.",
                           request.title);
        return {};
    }
    const auto connection = frame->getConnection().shared_from_this();
    X11Modal* outer = connection->setModal(this);
    child = &*process;
    std::string output;
    for (bool more = true; more && frame->isAlive();) {
        if (connection->waitAndHandle(process->outputDescriptor(), kWaitPeriod))
            more = process->readOutput(output);
    }
    child = nullptr;
    connection->setModal(outer);
    // If the frame is closed, the process's destructor ends it.
    if (!frame->isAlive() || process->wait() != 0)
        return {};

    std::vector<std::string> paths;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty() && line.front() == '/')
            paths.push_back(line);
    }
    return paths;
}

void X11FileDialog::cancel()
{
    if (child)
        child->terminate();
}

}  // namespace X11
}  // namespace VSTGUI
