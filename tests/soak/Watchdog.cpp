// A thread that looks every half second whether the others have got on.
#include "Watchdog.h"

#include <chrono>
#include <cstdlib>
#include <vector>

Watchdog::Watchdog(Run& shared, int threads)
    : watched(static_cast<std::size_t>(threads)), run(shared), thread([this] { watch(); })
{
}

Watchdog::~Watchdog()
{
    watching = false;
    thread.join();
}

void Watchdog::watch()
{
    constexpr std::chrono::milliseconds kLook(500);
    std::vector<long long> steps(watched.size(), -1);
    std::vector<double> still(watched.size());  // seconds
    while (watching) {
        std::this_thread::sleep_for(kLook);
        for (std::size_t i = 0; i < watched.size(); ++i) {
            const Whereabouts& each = watched[i];
            const long long now = each.steps;
            still[i] = now == steps[i] ? still[i] + 1e-3 * static_cast<double>(kLook.count()) : 0.0;
            steps[i] = now;
            if (still[i] < run.hangSeconds)
                continue;
            run.fail(textOf("%s, step %lld",
                            i + 1 < watched.size() ? "an audio thread" : "the user's thread", now),
                     textOf("has stood still for %.0f s at '%s', seat %d", still[i],
                            each.doing.load(), each.seat.load()));
            // What hangs would hang an orderly end as well.
            std::_Exit(1);
        }
    }
}
