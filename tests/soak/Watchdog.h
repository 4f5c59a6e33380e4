// Ends the process when one of its threads stands still.
#pragma once

#include "Run.h"

#include <atomic>
#include <deque>
#include <thread>

// Where a thread is, told by itself.
struct Whereabouts {
    // `what` is a literal.
    void now(const char* what, int seatNumber)
    {
        doing = what;
        seat = seatNumber;
        ++steps;
    }

    std::atomic<const char*> doing{"starting"};
    std::atomic<int> seat{-1};
    std::atomic<long long> steps{0};
};

class Watchdog {
public:
    // The last of the threads is the user's.
    Watchdog(Run& run, int threads);
    ~Watchdog();

    std::deque<Whereabouts> watched;

private:
    void watch();

    Run& run;
    std::atomic<bool> watching{true};
    std::thread thread;
};
