// Documents, through the program that desktops bring for it.
#include "Documents.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace platform {

namespace {

// Answer of xdg-open.
constexpr int kNoProgramFound = 3;
// An opener that is still busy then has become the viewer.
constexpr std::chrono::seconds kPatience{10};

// The shell ends at once and is no child of ours any longer; what it leaves behind writes the
// opener's status.
constexpr const char* kScript = "{ xdg-open \"$1\" </dev/null >/dev/null 2>&1; echo $?; } &";

// Starts the opener and returns the end of a pipe that its status comes out of; -1 when that fails.
int startOpener(const std::string& path)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return -1;
    // A host's own libraries are not for programs of the desktop.
    std::vector<char*> environment;
    for (char** entry = environ; *entry; ++entry)
        if (std::strncmp(*entry, "LD_LIBRARY_PATH=", 16) != 0)
            environment.push_back(*entry);
    environment.push_back(nullptr);
    const char* const arguments[] = {"sh", "-c", kScript, "sh", path.c_str(), nullptr};

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    pid_t shell = 0;
    const int error = posix_spawn(&shell, "/bin/sh", &actions, nullptr,
                                  const_cast<char* const*>(arguments), environment.data());
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    if (error != 0) {
        close(ends[0]);
        return -1;
    }
    while (waitpid(shell, nullptr, 0) < 0 && errno == EINTR) { }
    fcntl(ends[0], F_SETFL, O_NONBLOCK);
    return ends[0];
}

OpenResult resultOf(const std::string& status)
{
    if (status == "0\n")
        return OpenResult::Opened;
    return std::atoi(status.c_str()) == kNoProgramFound ? OpenResult::NoViewer : OpenResult::Failed;
}

class Opening : public DocumentOpening {
public:
    explicit Opening(const std::string& path)
    {
        struct stat there;
        if (stat(path.c_str(), &there) == 0)
            pipe = startOpener(path);
        if (pipe < 0)
            answer = OpenResult::Failed;
    }
    ~Opening() override { closePipe(); }
    Opening(const Opening&) = delete;
    Opening& operator=(const Opening&) = delete;

    std::optional<OpenResult> result() override
    {
        if (answer)
            return answer;
        char buffer[16];
        const ssize_t count = read(pipe, buffer, sizeof buffer);
        // The shell writes its line at once.
        if (count >= 0)
            answer = resultOf(std::string(buffer, static_cast<std::size_t>(count)));
        else if (std::chrono::steady_clock::now() >= patienceEnds)
            answer = OpenResult::Opened;
        if (answer)
            closePipe();
        return answer;
    }

private:
    void closePipe()
    {
        if (pipe >= 0)
            close(pipe);
        pipe = -1;
    }

    int pipe = -1;
    const std::chrono::steady_clock::time_point patienceEnds =
        std::chrono::steady_clock::now() + kPatience;
    std::optional<OpenResult> answer;
};

}  // namespace

std::unique_ptr<DocumentOpening> openDocument(void* /*window*/, const std::string& path)
{
    return std::make_unique<Opening>(path);
}

}  // namespace platform
