// What the process holds: its memory over the time, and everything at the moments when the library
// is unloaded, at which nothing of it may be left.
#pragma once

#include "Run.h"
#include "System.h"

#include <string>
#include <vector>

class HoldingsWatch {
public:
    explicit HoldingsWatch(Run& run);

    // All instances are closed, and the library is unloaded. The first time is what later ones are
    // held against.
    void atRest();
    // Every now and then; `minutes` since the run began.
    void sample(double minutes);
    // The samples' straight line, from the end of the first third on.
    void judgeGrowth();

    std::int64_t memoryNow() const { return samples.empty() ? -1 : samples.back().bytes; }
    std::string report() const;

private:
    struct Sample {
        double minutes;
        std::int64_t bytes;
    };
    struct Line {
        double bytesPerMinute = 0.0;
        double minutes = 0.0;  // that it spans
    };
    Line line() const;
    void compare(const char* what, std::int64_t before, std::int64_t now, std::int64_t allowed);
    // A line of the report: what there was at the first unloading and, evenly, at later ones.
    std::string row(const char* what, std::int64_t Holdings::*member) const;

    Run& run;
    std::vector<Sample> samples;
    std::vector<Holdings> rests;
};
