// Starting programs with posix_spawn and talking to them without ever waiting for ever.
#include "ChildProcess.h"

#include "HostError.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace host {

namespace {

using Clock = std::chrono::steady_clock;

// How long a silent program goes unexamined. Relatives of it may hold its pipes open after its end,
// so that the end of the pipe alone is no sign to wait for.
constexpr int kLookAgainMs = 50;

constexpr ChildProcess::Seconds kFarewell{5.0};

Clock::time_point deadlineAfter(ChildProcess::Seconds limit)
{
    return Clock::now() + std::chrono::duration_cast<Clock::duration>(limit);
}

std::vector<std::string>
mergedEnvironment(const std::vector<std::pair<std::string, std::string>>& additions)
{
    std::vector<std::string> merged;
    for (char** entry = environ; *entry; ++entry) {
        const std::string text = *entry;
        const std::string name = text.substr(0, text.find('='));
        const bool replaced = std::any_of(additions.begin(), additions.end(),
                                          [&](const auto& pair) { return pair.first == name; });
        if (!replaced)
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

ChildProcess::ChildProcess(const std::vector<std::string>& words,
                           const std::vector<std::pair<std::string, std::string>>& environment)
    : pid(-1), toChild(-1), fromChild(-1), errors(-1), ended(false), exitCode(-1)
{
    // Writing to a program that has gone must be an error here, not a signal.
    std::signal(SIGPIPE, SIG_IGN);

    int input[2], output[2];
    if (pipe2(input, O_CLOEXEC) != 0)
        throw HostError(std::string("cannot make a pipe: ") + std::strerror(errno));
    if (pipe2(output, O_CLOEXEC) != 0) {
        const int reason = errno;
        close(input[0]);
        close(input[1]);
        throw HostError(std::string("cannot make a pipe: ") + std::strerror(reason));
    }
    errors = memfd_create("errors", MFD_CLOEXEC);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    if (errors >= 0)
        posix_spawn_file_actions_adddup2(&actions, errors, STDERR_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);

    std::vector<std::string> arguments = words;
    std::vector<std::string> variables = mergedEnvironment(environment);
    const int failure = posix_spawnp(&pid, arguments[0].c_str(), &actions, &attributes,
                                     pointersTo(arguments).data(), pointersTo(variables).data());
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    close(input[0]);
    close(output[1]);
    toChild = input[1];
    fromChild = output[0];
    if (failure) {
        closePipes();
        if (errors >= 0)
            close(errors);
        throw HostError("cannot start '" + words[0] + "': "
                        + (failure == ENOENT ? "it is not installed" : std::strerror(failure)));
    }
    fcntl(toChild, F_SETFL, O_NONBLOCK);
    fcntl(fromChild, F_SETFL, O_NONBLOCK);
}

ChildProcess::~ChildProcess()
{
    closePipes();
    wait(kFarewell);
    if (!ended) {
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
    }
    if (errors >= 0)
        close(errors);
}

void ChildProcess::closePipes()
{
    for (int* end : {&toChild, &fromChild}) {
        if (*end >= 0)
            close(*end);
        *end = -1;
    }
}

bool ChildProcess::hasEnded()
{
    int status = 0;
    if (!ended && waitpid(pid, &status, WNOHANG) == pid) {
        ended = true;
        exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    return ended;
}

ChildProcess::Outcome ChildProcess::write(const void* data, std::size_t size, Seconds limit)
{
    const auto deadline = deadlineAfter(limit);
    const auto* next = static_cast<const char*>(data);
    while (size > 0) {
        const ssize_t count = ::write(toChild, next, size);
        if (count > 0) {
            next += count;
            size -= static_cast<std::size_t>(count);
            continue;
        }
        if (errno != EAGAIN && errno != EINTR)
            return Outcome::Ended;
        if (hasEnded())
            return Outcome::Ended;
        if (Clock::now() >= deadline)
            return Outcome::TimedOut;
        pollfd waiting{toChild, POLLOUT, 0};
        poll(&waiting, 1, kLookAgainMs);
    }
    return Outcome::Done;
}

ChildProcess::Outcome ChildProcess::read(void* data, std::size_t size, Seconds limit)
{
    const auto deadline = deadlineAfter(limit);
    auto* next = static_cast<char*>(data);
    bool lastLook = false;
    while (size > 0) {
        const ssize_t count = ::read(fromChild, next, size);
        if (count > 0) {
            next += count;
            size -= static_cast<std::size_t>(count);
            continue;
        }
        if (count == 0 || (errno != EAGAIN && errno != EINTR) || lastLook)
            return Outcome::Ended;
        if (Clock::now() >= deadline)
            return Outcome::TimedOut;
        // What it wrote just before its end is still to be read.
        lastLook = hasEnded();
        if (lastLook)
            continue;
        pollfd waiting{fromChild, POLLIN, 0};
        poll(&waiting, 1, kLookAgainMs);
    }
    return Outcome::Done;
}

ChildProcess::Outcome ChildProcess::converse(const std::string& input, std::string& output,
                                             Seconds limit)
{
    const auto deadline = deadlineAfter(limit);
    std::size_t written = 0;
    for (;;) {
        if (toChild >= 0) {
            const ssize_t count = ::write(toChild, input.data() + written, input.size() - written);
            if (count > 0)
                written += static_cast<std::size_t>(count);
            const bool gone = count < 0 && errno != EAGAIN && errno != EINTR;
            if (gone || written == input.size()) {
                close(toChild);
                toChild = -1;
            }
        }
        char buffer[65536];
        const ssize_t count = ::read(fromChild, buffer, sizeof(buffer));
        if (count > 0) {
            output.append(buffer, static_cast<std::size_t>(count));
            continue;
        }
        if (count == 0 || (errno != EAGAIN && errno != EINTR))
            return Outcome::Done;
        if (Clock::now() >= deadline)
            return Outcome::TimedOut;
        pollfd waiting[2]{{fromChild, POLLIN, 0}, {toChild, POLLOUT, 0}};
        poll(waiting, toChild >= 0 ? 2 : 1, kLookAgainMs);
    }
}

int ChildProcess::wait(Seconds limit)
{
    const auto deadline = deadlineAfter(limit);
    while (!hasEnded() && Clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    return exitCode;
}

std::string ChildProcess::lastWords() const
{
    std::string all(65536, '\0');
    const off_t length = errors >= 0 ? lseek(errors, 0, SEEK_END) : 0;
    const off_t start = std::max<off_t>(0, length - static_cast<off_t>(all.size()));
    const ssize_t count = errors >= 0 ? pread(errors, all.data(), all.size(), start) : 0;
    all.resize(static_cast<std::size_t>(std::max<ssize_t>(0, count)));

    const std::size_t last = all.find_last_not_of(" \t\r\n");
    if (last == std::string::npos)
        return "";
    all.resize(last + 1);
    const std::size_t lineStart = all.find_last_of("\r\n");
    return lineStart == std::string::npos ? all : all.substr(lineStart + 1);
}

}  // namespace host
