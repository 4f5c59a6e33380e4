#include "platform/posix/ChildProcess.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <thread>

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace platform {

namespace {

using Clock = std::chrono::steady_clock;

constexpr ChildProcess::Seconds kExitTimeout{5.0};

struct Pipe {
    int readEnd = -1;
    int writeEnd = -1;
};

// Both ends are -1 if the system creates none.
Pipe makePipe()
{
    int ends[2];
    return pipe2(ends, O_CLOEXEC) == 0 ? Pipe{ends[0], ends[1]} : Pipe{};
}

void closeEnd(int& end)
{
    if (end >= 0)
        close(end);
    end = -1;
}

// The environment of this process with `additions` and without the variable `removed`.
std::vector<std::string> environmentWith(const ChildProcess::Environment& additions,
                                         const char* removed)
{
    std::vector<std::string> merged;
    for (char** entry = environ; *entry; ++entry) {
        const std::string text = *entry;
        const std::string name = text.substr(0, text.find('='));
        const bool replaced = std::any_of(additions.begin(), additions.end(),
                                          [&](const auto& pair) { return pair.first == name; });
        if (!replaced && name != removed)
            merged.push_back(text);
    }
    for (const auto& [name, value] : additions)
        merged.push_back(name + "=" + value);
    return merged;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace

ChildProcess::ChildProcess(Role role, const std::vector<std::string>& words,
                           const Environment& additions)
    : role(role)
{
    Pipe output = makePipe();
    Pipe input;
    if (role == Role::Helper) {
        // Writing to a program that has ended must be an error here, not a signal.
        std::signal(SIGPIPE, SIG_IGN);
        input = makePipe();
        errors = memfd_create("errors", MFD_CLOEXEC);
    } else {
        input.readEnd = open("/dev/null", O_RDONLY | O_CLOEXEC);
    }
    if (input.readEnd >= 0 && output.readEnd >= 0)
        start(words, additions, input.readEnd, output.writeEnd);
    else
        failure = std::string("cannot make a pipe: ") + std::strerror(errno);
    closeEnd(input.readEnd);
    closeEnd(output.writeEnd);
    toChild = input.writeEnd;
    fromChild = output.readEnd;
    if (!started()) {
        closePipes();
        return;
    }
    if (toChild >= 0)
        fcntl(toChild, F_SETFL, O_NONBLOCK);
    fcntl(fromChild, F_SETFL, O_NONBLOCK);
}

void ChildProcess::start(std::vector<std::string> words, const Environment& additions, int input,
                         int output)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    if (errors >= 0)
        posix_spawn_file_actions_adddup2(&actions, errors, STDERR_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);

    std::vector<std::string> variables =
        environmentWith(additions, role == Role::Desktop ? "LD_LIBRARY_PATH" : "");
    const int error = posix_spawnp(&pid, words[0].c_str(), &actions, &attributes,
                                   pointersTo(words).data(), pointersTo(variables).data());
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    ended = error != 0;
    if (error == 0)
        return;
    pid = -1;
    failure = "cannot start '" + words[0]
        + "': " + (error == ENOENT ? "it is not installed" : std::strerror(error));
}

ChildProcess::~ChildProcess()
{
    closePipes();
    if (role == Role::Desktop)
        terminate();
    wait(kExitTimeout);
    if (!ended) {
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
    }
    closeEnd(errors);
}

void ChildProcess::closePipes()
{
    closeEnd(toChild);
    closeEnd(fromChild);
}

bool ChildProcess::hasEnded()
{
    if (ended)
        return true;
    int status = 0;
    const pid_t answer = waitpid(pid, &status, WNOHANG);
    ended = answer == pid || (answer < 0 && errno == ECHILD);
    if (answer == pid)
        exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    else if (ended)
        exitCode = 0;
    return ended;
}

bool ChildProcess::readOutput(std::string& to)
{
    char buffer[65536];
    for (;;) {
        const ssize_t count = ::read(fromChild, buffer, sizeof buffer);
        if (count > 0)
            to.append(buffer, static_cast<std::size_t>(count));
        else if (count == 0 || errno != EINTR)
            return count < 0 && errno == EAGAIN;
    }
}

void ChildProcess::terminate()
{
    if (!hasEnded())
        kill(pid, SIGTERM);
}

int ChildProcess::wait(Seconds limit)
{
    const auto start = Clock::now();
    while (!hasEnded() && Clock::now() - start < limit)
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    return exitCode;
}

}  // namespace platform
