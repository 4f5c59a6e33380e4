// Communication with a helper, with a time limit for each call.
#include "platform/posix/ChildProcess.h"

#include <algorithm>
#include <cerrno>

#include <poll.h>
#include <unistd.h>

namespace platform {

namespace {

using Clock = std::chrono::steady_clock;

// How often to check whether a silent program has ended. Its children may keep its pipes open, so
// that the end of the pipe alone does not show that.
constexpr int kPollMs = 50;

}  // namespace

ChildProcess::Outcome ChildProcess::write(const void* data, std::size_t size, Seconds limit)
{
    const auto start = Clock::now();
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
        if (Clock::now() - start >= limit)
            return Outcome::TimedOut;
        pollfd waiting{toChild, POLLOUT, 0};
        poll(&waiting, 1, kPollMs);
    }
    return Outcome::Done;
}

ChildProcess::Outcome ChildProcess::read(void* data, std::size_t size, Seconds limit)
{
    const auto start = Clock::now();
    auto* next = static_cast<char*>(data);
    bool isLastRead = false;
    while (size > 0) {
        const ssize_t count = ::read(fromChild, next, size);
        if (count > 0) {
            next += count;
            size -= static_cast<std::size_t>(count);
            continue;
        }
        if (count == 0 || (errno != EAGAIN && errno != EINTR) || isLastRead)
            return Outcome::Ended;
        if (Clock::now() - start >= limit)
            return Outcome::TimedOut;
        // Its last output, from just before its end, is still to be read.
        isLastRead = hasEnded();
        if (isLastRead)
            continue;
        pollfd waiting{fromChild, POLLIN, 0};
        poll(&waiting, 1, kPollMs);
    }
    return Outcome::Done;
}

ChildProcess::Outcome ChildProcess::converse(const std::string& input, std::string& output,
                                             Seconds limit)
{
    const auto start = Clock::now();
    std::size_t written = 0;
    for (;;) {
        if (toChild >= 0) {
            const ssize_t count = ::write(toChild, input.data() + written, input.size() - written);
            if (count > 0)
                written += static_cast<std::size_t>(count);
            const bool failed = count < 0 && errno != EAGAIN && errno != EINTR;
            if (failed || written == input.size()) {
                close(toChild);
                toChild = -1;
            }
        }
        if (!readOutput(output))
            return Outcome::Done;
        if (Clock::now() - start >= limit)
            return Outcome::TimedOut;
        pollfd waiting[2]{{fromChild, POLLIN, 0}, {toChild, POLLOUT, 0}};
        poll(waiting, toChild >= 0 ? 2 : 1, kPollMs);
    }
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

}  // namespace platform
