// ChildProcess: a program started without a shell, with a pipe from its output. Linux only.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

namespace platform {

class ChildProcess {
public:
    using Seconds = std::chrono::duration<double>;
    using Environment = std::vector<std::pair<std::string, std::string>>;

    enum class Role {
        // Of the desktop: has no input, writes its errors where this process does, and does not see
        // this process's LD_LIBRARY_PATH, which belongs to the host.
        Desktop,
        // Has a pipe to its input; what it writes to its error output is kept. SIGPIPE is ignored
        // from then on, in the whole of this process.
        Helper,
    };

    // The first word is the program, looked up in PATH. `additions` go into its environment.
    ChildProcess(Role role, const std::vector<std::string>& words,
                 const Environment& additions = {});
    // Closes the pipes and terminates a program of the desktop. Waits for a few seconds, then kills
    // the program.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    bool started() const { return pid > 0; }
    // Why it was not started.
    const std::string& startError() const { return failure; }

    // Readable when there is output or at its end; -1 without a child.
    int outputDescriptor() const { return fromChild; }
    // Appends the available output, without waiting. False at the end of the output.
    bool readOutput(std::string& to);
    bool hasEnded();
    // Sends SIGTERM.
    void terminate();
    // Waits up to `limit` for the end. Returns the exit code, or -1 if the program has not ended or
    // was ended by a signal; 0 if other code of this process has collected the exit code.
    int wait(Seconds limit = Seconds(1e9));

    enum class Outcome { Done, Ended, TimedOut };
    // Transfer exactly `size` bytes. Ended: the program has closed its side or has ended.
    Outcome write(const void* data, std::size_t size, Seconds limit);
    Outcome read(void* data, std::size_t size, Seconds limit);
    // Writes all of `input`, closes it, and reads the output to its end, both at once.
    Outcome converse(const std::string& input, std::string& output, Seconds limit);
    // The last line of a helper's error output that is not blank.
    std::string lastWords() const;

private:
    void start(std::vector<std::string> words, const Environment& additions, int input, int output);
    void closePipes();

    const Role role;
    std::string failure;
    pid_t pid = -1;
    int toChild = -1;
    int fromChild = -1;
    int errors = -1;  // an unnamed file
    bool ended = true;
    int exitCode = -1;
};

}  // namespace platform
