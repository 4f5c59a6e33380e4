#include "platform/Files.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

class Descriptor {
public:
    explicit Descriptor(int number) : number(number) { }
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    operator int() const { return number; }
    bool close()
    {
        const int closing = number;
        number = -1;
        return closing < 0 || ::close(closing) == 0;
    }

private:
    int number;
};

// The path with symbolic links resolved, also one to a file that does not exist.
std::string resolved(std::string path)
{
    constexpr int kMaxLinks = 40;
    for (int i = 0; i < kMaxLinks; ++i) {
        const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr),
                                                               &std::free);
        if (real)
            return real.get();
        char target[PATH_MAX];
        const ssize_t size = readlink(path.c_str(), target, sizeof(target));
        if (size <= 0 || static_cast<std::size_t>(size) == sizeof(target))
            break;
        const std::string folder = target[0] == '/' ? "" : path.substr(0, path.rfind('/') + 1);
        path = folder + std::string(target, static_cast<std::size_t>(size));
    }
    return path;
}

bool writeAll(int file, const std::vector<std::uint8_t>& bytes)
{
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t count = write(file, bytes.data() + done, bytes.size() - done);
        if (count < 0 && errno != EINTR)
            return false;
        done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return true;
}

// Creates a file beside the target, under a name that no other process or thread uses now. The name
// is short, since the target's may have the largest length that the file system allows.
int createBeside(const std::string& target, std::string& name)
{
    static std::atomic<unsigned> count{0};
    constexpr int kAttempts = 100;
    const std::string folder = target.substr(0, target.rfind('/') + 1);
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        name =
            folder + ".zkrt46-" + std::to_string(getpid()) + '-' + std::to_string(++count) + ".tmp";
        const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (file >= 0 || errno != EEXIST)
            return file;
    }
    return -1;
}

// For a file that a new one cannot replace. Nothing is changed if it cannot be opened or the disk
// is full.
bool writeInPlace(const std::string& target, const std::vector<std::uint8_t>& bytes, Sync sync)
{
    Descriptor file(open(target.c_str(), O_WRONLY | O_CLOEXEC));
    struct stat status;
    if (file < 0 || fstat(file, &status) != 0)
        return false;
    const auto size = static_cast<off_t>(bytes.size());
    if (size > status.st_size && posix_fallocate(file, 0, size) != 0) {
        while (ftruncate(file, status.st_size) != 0 && errno == EINTR) { }
        return false;
    }
    return writeAll(file, bytes) && ftruncate(file, size) == 0
        && (sync == Sync::None || fsync(file) == 0) && file.close();
}

}  // namespace

const char kPathSeparator = '/';

std::string workingDirectory()
{
    const std::unique_ptr<char, decltype(&std::free)> path(getcwd(nullptr, 0), &std::free);
    return path ? path.get() : "";
}

bool setWorkingDirectory(const std::string& path)
{
    return chdir(path.c_str()) == 0;
}

std::optional<std::vector<std::uint8_t>> readFile(const std::string& path, std::size_t limit,
                                                  Access access)
{
    const int mode = access == Access::Read ? O_RDONLY : O_RDWR;
    const Descriptor file(open(path.c_str(), mode | O_CLOEXEC | O_NONBLOCK));
    struct stat status;
    if (file < 0 || fstat(file, &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    std::vector<std::uint8_t> bytes(std::min(static_cast<std::size_t>(status.st_size), limit));
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = read(file, bytes.data() + done, bytes.size() - done);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    bytes.resize(done);
    return bytes;
}

bool replaceFile(const std::string& path, const std::vector<std::uint8_t>& bytes, Sync sync)
{
    const std::string target = resolved(path);
    struct stat status;
    const bool exists = stat(target.c_str(), &status) == 0;
    if (exists && (!S_ISREG(status.st_mode) || access(target.c_str(), W_OK) != 0))
        return false;

    std::string temporary;
    Descriptor file(createBeside(target, temporary));
    if (file < 0)
        return exists && writeInPlace(target, bytes, sync);
    const bool keepsOwner = !exists || fchown(file, status.st_uid, status.st_gid) == 0;
    if (exists && fchmod(file, status.st_mode & 07777) != 0) {
        // Ignored, since some file systems have no permissions.
    }
    if (keepsOwner && writeAll(file, bytes) && (sync == Sync::None || fsync(file) == 0)
        && file.close() && rename(temporary.c_str(), target.c_str()) == 0)
        return true;
    unlink(temporary.c_str());
    return !keepsOwner && writeInPlace(target, bytes, sync);
}

}  // namespace platform
