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
    // Closes the pipes and asks a program of the desktop to end. Gives it a few seconds, then ends
    // it.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    bool started() const { return pid > 0; }
    // Why it was not started.
    const std::string& startError() const { return failure; }

    // Readable when output or its end has come; -1 when there is no child.
    int outputDescriptor() const { return fromChild; }
    // Appends what is there, without waiting. False at the end of the output.
    bool readOutput(std::string& to);
    // Asks it to end.
    void terminate();
    // The exit code once the program has ended, or -1 where it has not or died of a signal. 0 in a
    // process that reaps its children elsewhere, where nobody can know.
    int wait(Seconds limit = Seconds(1e9));

    enum class Outcome { Done, Ended, TimedOut };
    // Move exactly `size` bytes. Ended: the program closed its side or is gone.
    Outcome write(const void* data, std::size_t size, Seconds limit);
    Outcome read(void* data, std::size_t size, Seconds limit);
    // Writes all of `input`, closes it, and reads the output to its end, both at once.
    Outcome converse(const std::string& input, std::string& output, Seconds limit);
    // The last line of a helper's error output that says something.
    std::string lastWords() const;

private:
    void start(std::vector<std::string> words, const Environment& additions, int input, int output);
    bool hasEnded();
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
