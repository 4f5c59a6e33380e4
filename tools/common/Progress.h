// Progress: a progress bar on standard error, if that is a terminal.
#pragma once

#include <chrono>
#include <string>

namespace tool {

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
    std::chrono::steady_clock::time_point next;
};

}  // namespace tool
