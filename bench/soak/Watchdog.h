// Ends the process when one of its threads stands still.
#pragma once

#include "Run.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

// Where a thread is, told by itself.
struct Whereabouts {
    explicit Whereabouts(const char* name) : thread(name) { }

    // `what` is a literal.
    void now(const char* what, int seatNumber = -1)
    {
        doing = what;
        seat = seatNumber;
        ++steps;
    }

    const char* const thread;
    std::atomic<const char*> doing{"starting"};
    std::atomic<int> seat{-1};
    std::atomic<long long> steps{0};
    std::atomic<bool> over{false};
};

class Watchdog {
public:
    explicit Watchdog(Run& run);
    ~Watchdog();

    // Before `begin`; lives as long as the watchdog.
    Whereabouts& add(const char* thread);
    void begin();

private:
    void watch();

    Run& run;
    std::deque<Whereabouts> watched;
    std::mutex mutex;
    std::condition_variable ending;
    bool ended = false;
    std::thread thread;
};
