// Writes to a temporary file, which is also removed when the program is interrupted.
#include "tools/common/OutputFile.h"

#include "tools/common/ScratchFile.h"
#include "tools/common/ToolError.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <random>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tool {

namespace {

namespace fs = std::filesystem;

// The temporary files that an interruption removes; the signal handler may only read them.
struct InterruptionSlot {
    char path[4096];
    std::atomic<bool> used;
};
std::array<InterruptionSlot, 256> interruptionSlots;
std::mutex interruptionSlotsLock;

void onInterruption(int signal)
{
    for (InterruptionSlot& slot : interruptionSlots)
        if (slot.used)
            unlink(slot.path);
    _exit(128 + signal);
}

// Returns the slot for forgetting it again; -1 if there is none for it.
int removeOnInterruption(const std::string& path)
{
    const std::lock_guard<std::mutex> lock(interruptionSlotsLock);
    if (path.size() >= sizeof(InterruptionSlot::path))
        return -1;
    for (std::size_t i = 0; i < interruptionSlots.size(); ++i) {
        InterruptionSlot& slot = interruptionSlots[i];
        if (slot.used)
            continue;
        std::memcpy(slot.path, path.c_str(), path.size() + 1);
        slot.used = true;
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
            // What the caller has us ignore stays ignored, as under nohup.
            struct sigaction now;
            if (sigaction(signal, nullptr, &now) == 0 && now.sa_handler != SIG_IGN)
                std::signal(signal, onInterruption);
        }
        return static_cast<int>(i);
    }
    return -1;
}

void keepOnInterruption(int slot)
{
    if (slot >= 0)
        interruptionSlots[static_cast<std::size_t>(slot)].used = false;
}

// The path with symbolic links resolved, also one to a file that does not exist.
std::string resolved(const std::string& path)
{
    constexpr int kMaxLinks = 40;
    std::error_code error;
    fs::path target = path;
    for (int i = 0; i < kMaxLinks && fs::is_symlink(target, error); ++i)
        target = target.parent_path() / fs::read_symlink(target, error);
    const fs::path canonical = fs::weakly_canonical(target, error);
    return error ? path : canonical.string();
}

mode_t modeForNewFiles()
{
    static const mode_t mask = [] {
        const mode_t now = umask(0);
        umask(now);
        return now;
    }();
    return 0666 & ~mask;
}

}  // namespace

OutputFile::OutputFile(const std::string& path)
    : path(path), interruptionSlot(-1), file(-1), failure(0)
{
    // Exceeding a size limit then gives an error instead of a signal.
    std::signal(SIGXFSZ, SIG_IGN);
    if (path == "-") {
        file = openScratchFile(temporaryFolder());
        return;
    }
    target = resolved(path);
    struct stat there;
    mode_t mode = modeForNewFiles();
    if (stat(target.c_str(), &there) == 0) {
        if (!S_ISREG(there.st_mode))
            throw ToolError("cannot write '" + path + "': it is not an ordinary file");
        // The superuser may write to any file, but one without permission to write is protected.
        if (!(there.st_mode & 0222) || access(target.c_str(), W_OK) != 0)
            throw ToolError("cannot write '" + path + "': it is write-protected");
        mode = there.st_mode & 07777;
    }
    createTemporary();
    if (fchmod(file, mode) != 0) {
        // The file system has no permissions; not an error.
    }
}

// The name is registered before the file exists, so that no interruption leaves it.
void OutputFile::createTemporary()
{
    constexpr int kAttempts = 100;
    const fs::path folder = fs::path(target).parent_path();
    std::random_device random;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        temporary = (folder / (".zkrt46-" + std::to_string(random()))).string();
        interruptionSlot = removeOnInterruption(temporary);
        file = open(temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (file >= 0)
            return;
        const int reason = errno;
        keepOnInterruption(interruptionSlot);
        if (reason != EEXIST)
            refuse(reason);
    }
    refuse(EEXIST);
}

OutputFile::~OutputFile()
{
    if (file >= 0)
        close(file);
    if (!temporary.empty())
        unlink(temporary.c_str());
    keepOnInterruption(interruptionSlot);
}

std::int64_t OutputFile::write(const void* data, std::int64_t size)
{
    const auto* next = static_cast<const char*>(data);
    std::int64_t done = 0;
    while (done < size && !failure) {
        const ssize_t count = ::write(file, next + done, static_cast<std::size_t>(size - done));
        if (count >= 0)
            done += count;
        else if (errno != EINTR)
            failure = errno;
    }
    return done;
}

std::int64_t OutputFile::read(void* data, std::int64_t size)
{
    return ::read(file, data, static_cast<std::size_t>(size));
}

std::int64_t OutputFile::seek(std::int64_t offset, int whence)
{
    return lseek(file, offset, whence);
}

std::int64_t OutputFile::size() const
{
    struct stat status;
    return fstat(file, &status) == 0 ? status.st_size : 0;
}

void OutputFile::commit()
{
    if (path == "-") {
        if (!failure)
            failure = copyToStandardOutput(file);
        if (failure)
            refuse(failure);
        return;
    }
    if (!failure && fsync(file) != 0 && errno != EINVAL)
        failure = errno;
    if (close(file) != 0 && !failure)
        failure = errno;
    file = -1;
    if (!failure && rename(temporary.c_str(), target.c_str()) != 0)
        failure = errno;
    if (failure)
        refuse(failure);
    temporary.clear();
}

void OutputFile::refuse(int reason) const
{
    const std::string what = path == "-" ? "the standard output" : "'" + path + "'";
    throw ToolError("cannot write " + what + ": " + std::strerror(reason));
}

void writeFile(const std::string& path, const std::string& content)
{
    OutputFile file(path);
    file.write(content.data(), static_cast<std::int64_t>(content.size()));
    file.commit();
}

}  // namespace tool
