// ChildProcess: a program of the desktop's, started without a shell, whose output is read.
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace VSTGUI {
namespace X11 {

class ChildProcess {
public:
    // The first argument is the program, looked for in PATH. The child does not see this process's
    // LD_LIBRARY_PATH, which belongs to the host.
    explicit ChildProcess(const std::vector<std::string>& arguments);
    // Ends the child when it still runs.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    bool isRunning() const { return pid > 0; }
    // Readable when output or the end has come; -1 when there is no child.
    int getOutput() const { return output; }
    // Takes what is there, without waiting. False at the end of the output.
    bool readOutput(std::string& to);
    // Asks it to end.
    void terminate();
    // Waits for the end; true when it ended by itself with status 0.
    bool finish();

private:
    pid_t pid{-1};
    int output{-1};
};

// Whether PATH has such a program.
bool programExists(const std::string& name);

}  // namespace X11
}  // namespace VSTGUI
