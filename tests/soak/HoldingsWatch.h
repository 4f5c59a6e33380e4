// What the process holds: its memory over the time, and everything at the moments when the library
// is unloaded, at which nothing of it may be left.
#pragma once

#include "Run.h"
#include "System.h"

#include <cstdio>
#include <numeric>

class HoldingsWatch {
public:
    // The samples' own memory must not count.
    explicit HoldingsWatch(Run& shared) : run(shared) { samples.reserve(50000); }

    // All instances are closed, and the library is unloaded. The first time is what later ones are
    // held against.
    void atRest()
    {
        last = holdingsAtRest();
        if (++rests == 1)
            first = last;
        for (std::size_t i = 0; i < last.size(); ++i)
            if (last[i] > first[i] + kKinds[i].allowed)
                run.fail(textOf("unloading %d", rests - 1),
                         textOf("%lld %s, where there were %lld at the first unloading and %lld "
                                "more are granted",
                                last[i], kKinds[i].what, first[i], kKinds[i].allowed));
    }

    // In even distances of time.
    void sample()
    {
        if (samples.size() < samples.capacity())
            samples.push_back(static_cast<double>(memoryHeld()) / (1024.0 * 1024.0));
    }

    // Steady growth shows twice in the difference of the last two thirds' means. Under sanitizers
    // memory that is given back is kept for a while, to tell late uses.
    void judgeGrowth()
    {
        const auto third = static_cast<std::ptrdiff_t>(samples.size() / 3);
        if (kSanitized || third == 0)
            return;
        const auto middle = samples.end() - third;
        const double difference = std::accumulate(middle, samples.end(), 0.0)
            - std::accumulate(middle - third, middle, 0.0);
        growth = 2.0 * difference / static_cast<double>(third);
        if (growth > run.growthMiB)
            run.fail("the end",
                     textOf("the process has grown by %.1f MiB after the first third of its time, "
                            "where %.1f MiB are granted",
                            growth, run.growthMiB));
    }

    void print() const
    {
        std::printf("\nLibrary unloaded, %-14d     first      last\n", rests);
        for (std::size_t i = 0; i < last.size(); ++i)
            std::printf("  %-30s %9lld %9lld\n", kKinds[i].what, first[i], last[i]);
        std::printf("Memory of the process: %.1f MiB; %+.1f MiB after the first third\n\n",
                    mebibytes(), growth);
    }

    double mebibytes() const { return samples.empty() ? 0.0 : samples.back(); }

private:
    // In the order of Holdings, and how much of it system libraries may take for good at their
    // first use, and not again.
    static constexpr struct {
        const char* what;
        long long allowed;
    } kKinds[]{
        {"bytes on the heap", 512 * 1024},
        {"descriptors or handles", 8},
        {"threads", 0},
    };

    Run& run;
    std::vector<double> samples;  // MiB
    int rests = 0;
    Holdings first{}, last{};
    double growth = 0.0;  // MiB, after the first third
};
