// Ends the process when one of its threads makes no progress.
#pragma once

#include "tests/soak/Run.h"

#include <chrono>
#include <cstdlib>
#include <deque>
#include <thread>

// A thread's progress, reported by the thread itself.
struct Progress {
    // `what` must be a string literal.
    void now(const char* what, int seatNumber)
    {
        doing = what;
        slot = seatNumber;
        ++steps;
    }

    std::atomic<const char*> doing{"starting"};
    std::atomic<int> slot{-1};
    std::atomic<long long> steps{0};

    // Used only by the watchdog.
    long long stepsSeen = -1;
    double still = 0.0;  // seconds
};

// A thread that checks every half second whether the other threads have progressed.
class Watchdog {
public:
    // The last of the threads is the user's.
    Watchdog(Run& shared, int threads)
        : watched(static_cast<std::size_t>(threads)), run(shared), thread([this] { watch(); })
    {
    }
    ~Watchdog()
    {
        watching = false;
        thread.join();
    }

    std::deque<Progress> watched;

private:
    void watch()
    {
        while (watching) {
            std::this_thread::sleep_for(std::chrono::milliseconds(500));
            for (Progress& each : watched) {
                const long long now = each.steps;
                each.still = now == each.stepsSeen ? each.still + 0.5 : 0.0;
                each.stepsSeen = now;
                if (each.still < run.hangSeconds)
                    continue;
                run.fail(textOf("%s, step %lld",
                                &each == &watched.back() ? "the user's thread" : "an audio thread",
                                now),
                         textOf("no progress for %.0f s at '%s', slot %d", each.still,
                                each.doing.load(), each.slot.load()));
                // A regular exit would wait for the hanging thread.
                std::_Exit(1);
            }
        }
    }

    Run& run;
    std::atomic<bool> watching{true};
    std::thread thread;
};
