// What the process holds: its memory over the time, and everything at the moments when the library
// is unloaded, at which nothing of it may be left.
#pragma once

#include "Run.h"
#include "System.h"

#include <vector>

class HoldingsWatch {
public:
    explicit HoldingsWatch(Run& shared) : run(shared) { }

    // All instances are closed, and the library is unloaded. The first time is what later ones are
    // held against.
    void atRest();
    // In even distances of time.
    void sample();
    void judgeGrowth();
    void print() const;

    double mebibytes() const { return samples.empty() ? 0.0 : samples.back(); }

private:
    Run& run;
    std::vector<double> samples;  // MiB
    int rests = 0;
    Holdings first, last;
    double growth = 0.0;  // MiB, after the first third
};
