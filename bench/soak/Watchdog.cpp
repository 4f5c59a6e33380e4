// A thread that looks every half second whether the others have got on.
#include "Watchdog.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

Watchdog::Watchdog(Run& shared) : run(shared) { }

Watchdog::~Watchdog()
{
    {
        const std::lock_guard<std::mutex> guard(mutex);
        ended = true;
    }
    ending.notify_all();
    if (thread.joinable())
        thread.join();
}

Whereabouts& Watchdog::add(const char* name)
{
    return watched.emplace_back(name);
}

void Watchdog::begin()
{
    thread = std::thread([this] { watch(); });
}

void Watchdog::watch()
{
    constexpr double kLook = 0.5;  // seconds
    std::vector<long long> steps(watched.size(), -1);
    std::vector<double> still(watched.size(), 0.0);
    std::unique_lock<std::mutex> lock(mutex);
    while (!ending.wait_for(lock, std::chrono::duration<double>(kLook), [this] { return ended; })) {
        for (std::size_t i = 0; i < watched.size(); ++i) {
            const Whereabouts& each = watched[i];
            const long long now = each.steps;
            still[i] = now == steps[i] && !each.over ? still[i] + kLook : 0.0;
            steps[i] = now;
            if (still[i] < run.options.hangSeconds)
                continue;
            run.findings.add(textOf("%s, step %lld", each.thread, now),
                             textOf("has stood still for %.0f s at '%s', seat %d", still[i],
                                    each.doing.load(), each.seat.load()));
            // What hangs would hang an orderly end as well.
            std::_Exit(1);
        }
    }
}
