// Memory over the time, and comparisons at rest.
#include "HoldingsWatch.h"

#include <cstdio>
#include <numeric>

namespace {

// What there is, and how much of it system libraries may take for good at their first use, and not
// again.
const struct {
    const char* what;
    std::int64_t Holdings::*member;
    std::int64_t allowed;
} kKinds[]{
    {"bytes on the heap", &Holdings::heap, 512 * 1024},
    {"descriptors or handles", &Holdings::descriptors, 8},
    {"threads", &Holdings::threads, 0},
    {"GDI objects", &Holdings::drawing, 64},
};

}  // namespace

void HoldingsWatch::atRest()
{
    // The samples' own memory must not count.
    samples.reserve(50000);
    last = holdingsAtRest();
    if (++rests == 1)
        first = last;
    for (const auto& kind : kKinds)
        if (last.*kind.member > first.*kind.member + kind.allowed)
            run.fail(textOf("unloading %d", rests - 1),
                     textOf("%lld %s, where there were %lld at the first unloading and %lld more "
                            "are granted",
                            static_cast<long long>(last.*kind.member), kind.what,
                            static_cast<long long>(first.*kind.member),
                            static_cast<long long>(kind.allowed)));
}

void HoldingsWatch::sample()
{
    if (samples.size() < samples.capacity())
        samples.push_back(static_cast<double>(memoryHeld()) / (1024.0 * 1024.0));
}

// Steady growth shows twice in the difference of the last two thirds' means. Under sanitizers
// memory that is given back is kept for a while, to tell late uses.
void HoldingsWatch::judgeGrowth()
{
    const auto third = static_cast<std::ptrdiff_t>(samples.size() / 3);
    if (kSanitized || third == 0)
        return;
    const auto middle = samples.end() - third;
    const double difference =
        std::accumulate(middle, samples.end(), 0.0) - std::accumulate(middle - third, middle, 0.0);
    growth = 2.0 * difference / static_cast<double>(third);
    if (growth > run.growthMiB)
        run.fail("the end",
                 textOf("the process has grown by %.1f MiB after the first third of its time, "
                        "where %.1f MiB are granted",
                        growth, run.growthMiB));
}

void HoldingsWatch::print() const
{
    std::printf("\nLibrary unloaded, %-14d     first      last\n", rests);
    for (const auto& kind : kKinds)
        std::printf("  %-30s %9lld %9lld\n", kind.what, static_cast<long long>(first.*kind.member),
                    static_cast<long long>(last.*kind.member));
    std::printf("Memory of the process: %.1f MiB; %+.1f MiB after the first third\n\n", mebibytes(),
                growth);
}
