// Leak checks: the process's memory over time, and heap, descriptors and threads whenever the
// library is unloaded.
#pragma once

#include "tests/soak/Run.h"
#include "tests/soak/System.h"

#include <cstdio>
#include <numeric>

class ResourceWatch {
public:
    // Reserved, so that the samples themselves do not count as growth.
    explicit ResourceWatch(Run& shared) : run(shared) { samples.reserve(50000); }

    // To be called while the library is unloaded. The first call is the reference for later ones.
    void atRest()
    {
        last = resourcesAtRest();
        if (++rests == 1)
            first = last;
        for (std::size_t i = 0; i < last.size(); ++i)
            if (last[i] > first[i] + kKinds[i].allowed)
                run.fail(textOf("unloading %d", rests - 1),
                         textOf("%lld %s; %lld at the first unloading, and at most %lld more are "
                                "allowed",
                                last[i], kKinds[i].what, first[i], kKinds[i].allowed));
    }

    // To be called at regular intervals.
    void sample()
    {
        if (samples.size() < samples.capacity())
            samples.push_back(static_cast<double>(memoryHeld()) / (1024.0 * 1024.0));
    }

    // Steady growth over the last two thirds is twice the difference of their means. Sanitizers
    // keep freed memory for a while, to detect uses after free.
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
                     textOf("the process has grown by %.1f MiB after the first third of its time; "
                            "%.1f MiB are allowed",
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
    // In the order of Resources, with the growth allowed for what system libraries allocate once at
    // their first use.
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
    Resources first{}, last{};
    double growth = 0.0;  // MiB, after the first third
};
