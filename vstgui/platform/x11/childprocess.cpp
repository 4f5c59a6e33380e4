// Starting and reading programs.
#include "vstgui/platform/x11/childprocess.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace VSTGUI {
namespace X11 {

namespace {

constexpr char kLibraryPath[] = "LD_LIBRARY_PATH=";

std::vector<char*> childEnvironment()
{
    std::vector<char*> kept;
    for (char** entry = environ; *entry; ++entry) {
        if (std::strncmp(*entry, kLibraryPath, sizeof kLibraryPath - 1) != 0)
            kept.push_back(*entry);
    }
    kept.push_back(nullptr);
    return kept;
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& arguments)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return;
    std::vector<char*> argv;
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    std::vector<char*> environment = childEnvironment();

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    const int failed =
        posix_spawnp(&pid, argv[0], &actions, nullptr, argv.data(), environment.data());
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    if (failed != 0) {
        pid = -1;
        close(ends[0]);
        return;
    }
    output = ends[0];
    fcntl(output, F_SETFL, O_NONBLOCK);
}

ChildProcess::~ChildProcess()
{
    if (isRunning()) {
        terminate();
        finish();
    }
    if (output >= 0)
        close(output);
}

bool ChildProcess::readOutput(std::string& to)
{
    char buffer[4096];
    for (;;) {
        const ssize_t got = read(output, buffer, sizeof buffer);
        if (got > 0)
            to.append(buffer, static_cast<size_t>(got));
        else if (got < 0 && errno == EINTR)
            continue;
        else
            return got < 0 && errno == EAGAIN;
    }
}

void ChildProcess::terminate()
{
    if (isRunning())
        kill(pid, SIGTERM);
}

bool ChildProcess::finish()
{
    if (!isRunning())
        return false;
    int status = 0;
    pid_t result = 0;
    do
        result = waitpid(pid, &status, 0);
    while (result < 0 && errno == EINTR);
    const bool reaped = result == pid;
    pid = -1;
    // A host that reaps children itself leaves no status; the output decides then.
    return !reaped || (WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

bool programExists(const std::string& name)
{
    const char* path = std::getenv("PATH");
    std::istringstream folders(path ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (!folder.empty() && access((folder + "/" + name).c_str(), X_OK) == 0)
            return true;
    }
    return false;
}

}  // namespace X11
}  // namespace VSTGUI
