// A bar on a terminal's standard error; nothing anywhere else.
#pragma once

#include <chrono>
#include <string>

namespace tool {

class Progress {
public:
    explicit Progress(const std::string& label);
    // Wipes the bar.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // From 0 to 1. Cheap to call often.
    void show(double fraction);

private:
    std::string label;
    bool onTerminal;
    bool visible;
    std::chrono::steady_clock::time_point next;
};

}  // namespace tool
