// Documents and messages, through the programs that desktops bring for it.
#include "Documents.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <optional>
#include <thread>
#include <vector>

#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace platform {

namespace {

// Answers of xdg-open.
constexpr int kNoProgramFound = 3;
// What posix_spawn's child answers when the program itself is missing.
constexpr int kNoSuchCommand = 127;
constexpr std::chrono::seconds kPatience{3};

// Starts a program. Zero when that fails.
pid_t start(const std::vector<std::string>& words)
{
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);

    // A host's own libraries are not for programs of the desktop.
    std::vector<char*> environment;
    for (char** entry = environ; *entry; ++entry)
        if (std::strncmp(*entry, "LD_LIBRARY_PATH=", 16) != 0)
            environment.push_back(*entry);
    environment.push_back(nullptr);

    pid_t child = 0;
    const int error =
        posix_spawnp(&child, arguments[0], nullptr, nullptr, arguments.data(), environment.data());
    return error == 0 ? child : 0;
}

// The exit status of a child; nothing while it runs on after that time.
std::optional<int> exitStatus(pid_t child, std::chrono::milliseconds patience)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        int status = 0;
        const pid_t ended = waitpid(child, &status, WNOHANG);
        if (ended == child)
            return WIFEXITED(status) ? WEXITSTATUS(status) : kNoSuchCommand;
        if (ended < 0 && errno != EINTR)
            return kNoSuchCommand;
        if (std::chrono::steady_clock::now() >= end)
            return std::nullopt;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

}  // namespace

OpenResult openDocument(void* /*window*/, const std::string& path)
{
    struct stat there;
    if (stat(path.c_str(), &there) != 0)
        return OpenResult::Failed;
    const pid_t opener = start({"xdg-open", path});
    // An opener that is still busy then has become the viewer.
    const std::optional<int> status = opener ? exitStatus(opener, kPatience) : kNoSuchCommand;
    switch (status.value_or(0)) {
    case 0:
        return OpenResult::Opened;
    case kNoProgramFound:
        return OpenResult::NoViewer;
    default:
        return OpenResult::Failed;
    }
}

void showMessage(void* /*window*/, const std::string& text, const std::string& caption)
{
    const std::vector<std::vector<std::string>> programs{
        {"zenity", "--info", "--no-markup", "--title=" + caption, "--text=" + text},
        {"kdialog", "--title", caption, "--msgbox", text},
        {"xmessage", "-title", caption, text},
    };
    // By way of a shell that ends at once: the host does not stand still under an open message.
    for (const auto& program : programs) {
        std::vector<std::string> words{
            "/bin/sh", "-c", "command -v \"$1\" >/dev/null || exit 127; \"$@\" >/dev/null 2>&1 &",
            "sh"};
        words.insert(words.end(), program.begin(), program.end());
        if (const pid_t shell = start(words); shell && exitStatus(shell, kPatience) == 0)
            return;
    }
}

}  // namespace platform
