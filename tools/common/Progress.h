// Progress bars on standard error, if that is a terminal.
#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

namespace tool {

using Clock = std::chrono::steady_clock;

// ", 1:05 left", when a fraction of the work took `elapsed` seconds; empty as long as it cannot be
// told.
std::string timeLeft(double elapsed, double fraction);

class Progress {
public:
    explicit Progress(const std::string& label);
    // Erases the bar.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // `fraction` from 0 to 1. Redraws at most ten times a second.
    void show(double fraction);

private:
    std::string label;
    bool onTerminal;
    bool visible;
    Clock::time_point started, next;
};

// A bar for each job that is running, and one for all. Callable from any thread.
class ProgressBoard {
public:
    struct Job {
        std::string name;
        double weight;  // relative to the others
    };
    explicit ProgressBoard(const std::vector<Job>& jobs);
    // Erases the bars.
    ~ProgressBoard();
    ProgressBoard(const ProgressBoard&) = delete;
    ProgressBoard& operator=(const ProgressBoard&) = delete;

    // `fraction` from 0 to 1. A job runs from its first call until `finish`.
    void show(std::size_t job, double fraction);
    // `skipped` work does not count for the estimate of the time left. Prints `message` on standard
    // error unless it is empty.
    void finish(std::size_t job, bool skipped, const std::string& message);

private:
    struct State : Job {
        double fraction = 0.0;
        bool running = false;
        bool finished = false;
        bool skipped = false;
    };
    void draw();
    void erase();

    std::mutex lock;
    std::vector<State> jobs;
    bool onTerminal;
    int visibleLines;
    Clock::time_point started, next;
};

}  // namespace tool
