// A program started beside this one, with pipes to its input and from its output. What it writes to
// its error output is kept for a message. Linux only.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

namespace host {

class ChildProcess {
public:
    using Seconds = std::chrono::duration<double>;

    // The first word is the program, looked up in PATH. `environment` is added to our own.
    // Throws HostError when the program cannot be started.
    ChildProcess(const std::vector<std::string>& words,
                 const std::vector<std::pair<std::string, std::string>>& environment = {});
    // Closes the pipes, gives the program a few seconds to end by itself, then ends it.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    enum class Outcome { Done, Ended, TimedOut };
    // Move exactly `size` bytes. Ended: the program closed its side or is gone.
    Outcome write(const void* data, std::size_t size, Seconds limit);
    Outcome read(void* data, std::size_t size, Seconds limit);

    // Writes all of `input`, closes it, and reads the output to its end, both at once.
    Outcome converse(const std::string& input, std::string& output, Seconds limit);

    // The exit code once the program has ended, or -1 where it died of a signal.
    int wait(Seconds limit);
    // The last line of its error output that says something.
    std::string lastWords() const;

private:
    bool hasEnded();
    void closePipes();

    pid_t pid;
    int toChild;
    int fromChild;
    int errors;  // an unnamed file
    bool ended;
    int exitCode;
};

}  // namespace host
