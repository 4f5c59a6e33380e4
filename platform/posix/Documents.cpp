// Documents, opened through xdg-open.
#include "platform/Documents.h"

#include "platform/posix/ChildProcess.h"

#include <cstdlib>

#include <sys/stat.h>

namespace platform {

namespace {

// An exit status of xdg-open.
constexpr int kNoProgramFound = 3;
// An xdg-open that runs longer than this has become the viewer itself.
constexpr std::chrono::seconds kMaxWait{10};

// The shell exits at once, so that no child process is left to wait for; its background job writes
// the exit status of xdg-open.
constexpr const char* kScript = "{ xdg-open \"$1\" </dev/null >/dev/null 2>&1; echo $?; } &";

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
        struct stat info;
        if (stat(path.c_str(), &info) == 0)
            shell.emplace(ChildProcess::Role::Desktop,
                          std::vector<std::string>{"/bin/sh", "-c", kScript, "sh", path});
        if (shell && shell->started())
            shell->wait();
        else
            answer = OpenResult::Failed;
    }

    std::optional<OpenResult> result() override
    {
        if (answer)
            return answer;
        std::string status;
        const bool more = shell->readOutput(status);
        // The status arrives in one write.
        if (!more || !status.empty())
            answer = resultOf(status);
        else if (std::chrono::steady_clock::now() >= deadline)
            answer = OpenResult::Opened;
        if (answer)
            shell.reset();
        return answer;
    }

private:
    std::optional<ChildProcess> shell;
    const std::chrono::steady_clock::time_point deadline =
        std::chrono::steady_clock::now() + kMaxWait;
    std::optional<OpenResult> answer;
};

}  // namespace

std::unique_ptr<DocumentOpening> openDocument(void* /*window*/, const std::string& path)
{
    return std::make_unique<Opening>(path);
}

}  // namespace platform
