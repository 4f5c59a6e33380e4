// Writes to a temporary file, which is also removed when the program is interrupted.
#include "tools/common/OutputFile.h"

#include "tools/common/ToolError.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tool {

namespace {

namespace fs = std::filesystem;

// The temporary file that an interruption removes. There is one at a time.
char temporaryPath[4096];
volatile std::sig_atomic_t temporaryExists = 0;

void onInterruption(int signal)
{
    if (temporaryExists)
        unlink(temporaryPath);
    _exit(128 + signal);
}

void removeOnInterruption(const std::string& path)
{
    if (path.size() >= sizeof(temporaryPath))
        return;
    std::memcpy(temporaryPath, path.c_str(), path.size() + 1);
    temporaryExists = 1;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        std::signal(signal, onInterruption);
}

mode_t modeForNewFiles()
{
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : path(path), file(-1), failure(0)
{
    // Exceeding a size limit then gives an error instead of a signal.
    std::signal(SIGXFSZ, SIG_IGN);

    std::error_code error;
    const fs::path resolved = fs::weakly_canonical(path, error);
    target = error ? path : resolved.string();
    struct stat there;
    mode_t mode = modeForNewFiles();
    if (stat(target.c_str(), &there) == 0) {
        if (!S_ISREG(there.st_mode))
            throw ToolError("cannot write '" + path + "': it is not an ordinary file");
        mode = there.st_mode & 07777;
    }
    const fs::path place = target;
    std::string pattern = (place.parent_path() / ".zkrt46-XXXXXX").string();
    file = mkostemp(pattern.data(), O_CLOEXEC);
    if (file < 0)
        refuse(errno);
    temporary = pattern;
    removeOnInterruption(temporary);
    if (fchmod(file, mode) != 0) {
        // The file system has no permissions; not an error.
    }
}

OutputFile::~OutputFile()
{
    if (file >= 0)
        close(file);
    if (!temporary.empty())
        unlink(temporary.c_str());
    temporaryExists = 0;
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
    throw ToolError("cannot write '" + path + "': " + std::strerror(reason));
}

void writeFile(const std::string& path, const std::string& content)
{
    OutputFile file(path);
    file.write(content.data(), static_cast<std::int64_t>(content.size()));
    file.commit();
}

}  // namespace tool
