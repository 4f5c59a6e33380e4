// A run from beginning to end: seats, audio threads, the user, the watch over all of them.
#pragma once

#include "BlockTimes.h"
#include "HoldingsWatch.h"
#include "Player.h"
#include "Run.h"
#include "User.h"
#include "Watchdog.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

// Set from a signal handler: the run ends early, in order.
extern std::atomic<bool> interrupted;

class Soak {
public:
    // Throws HostError when the plug-in, or a display for its editors, is not there.
    explicit Soak(const SoakOptions& options);
    ~Soak();

    // True when nothing was found. Throws HostError as above.
    bool run();

private:
    using Clock = std::chrono::steady_clock;

    struct AudioThread {
        std::vector<Player*> players;
        BlockTimes times;
        Whereabouts* whereabouts = nullptr;
        std::thread thread;
    };

    void makeSeats();
    void playAlone(AudioThread& audio);
    void soak();
    void reload();
    void stopPlaying();
    bool mustEnd() const { return interrupted || shared.findings.count() > 0; }
    double minutes() const;
    void progress();
    void judgeTimes();
    void report();

    const SoakOptions& options;
    Run shared;
    Watchdog watchdog;
    HoldingsWatch holdings;
    std::vector<std::unique_ptr<Seat>> seats;
    std::vector<std::unique_ptr<Player>> players;
    std::vector<AudioThread> audioThreads;
    std::atomic<bool> playing{true};
    Whereabouts* userWhereabouts = nullptr;
    std::unique_ptr<User> user;
    BlockTimes times;  // of all threads, in the end
    Clock::time_point begun;
};
