#include "tools/common/ScratchFile.h"

#include "tools/common/ToolError.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace tool {

namespace {

// Returns 0 or an errno.
int copy(int from, int to)
{
    std::vector<char> buffer(1 << 16);
    for (;;) {
        const ssize_t count = read(from, buffer.data(), buffer.size());
        if (count == 0)
            return 0;
        if (count < 0 && errno != EINTR)
            return errno;
        for (ssize_t done = 0; done < count;) {
            const ssize_t more =
                write(to, buffer.data() + done, static_cast<std::size_t>(count - done));
            if (more < 0 && errno != EINTR)
                return errno;
            done += more > 0 ? more : 0;
        }
    }
}

}  // namespace

std::string temporaryFolder()
{
    const char* chosen = std::getenv("TMPDIR");
    return chosen && *chosen ? chosen : "/tmp";
}

int openScratchFile(const std::string& folder)
{
    // Exceeding a size limit then gives an error instead of a signal.
    std::signal(SIGXFSZ, SIG_IGN);
    std::string pattern = (folder.empty() ? "." : folder) + "/.zkrt46-XXXXXX";
    const int file = mkostemp(pattern.data(), O_CLOEXEC);
    if (file < 0)
        throw ToolError("cannot write to the folder '" + folder + "': " + std::strerror(errno));
    unlink(pattern.c_str());
    return file;
}

int copyOfStandardInput()
{
    const int file = openScratchFile(temporaryFolder());
    const int failure = copy(STDIN_FILENO, file);
    if (failure) {
        close(file);
        throw ToolError("cannot copy the standard input to '" + temporaryFolder()
                        + "': " + std::strerror(failure));
    }
    return file;
}

int copyToStandardOutput(int file)
{
    std::signal(SIGPIPE, SIG_IGN);  // a closed pipe then gives an error
    return lseek(file, 0, SEEK_SET) < 0 ? errno : copy(file, STDOUT_FILENO);
}

}  // namespace tool
