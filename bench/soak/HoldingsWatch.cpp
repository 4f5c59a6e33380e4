// Lines through samples, and comparisons at rest.
#include "HoldingsWatch.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr double kMiB = 1024.0 * 1024.0;

// What system libraries may take for good at their first use, and not again.
constexpr std::int64_t kHeapSlack = 512 * 1024;
constexpr std::int64_t kHandleSlack = 8;
constexpr std::int64_t kDrawingSlack = 64;

}  // namespace

HoldingsWatch::HoldingsWatch(Run& shared) : run(shared)
{
    constexpr std::size_t kSamplesOfADay = 50000;
    samples.reserve(kSamplesOfADay);
    rests.reserve(kSamplesOfADay / 10);
}

void HoldingsWatch::atRest()
{
    rests.push_back(holdingsAtRest());
    if (rests.size() == 1)
        return;
    const Holdings &first = rests.front(), &last = rests.back();
    compare("descriptors or handles", first.descriptors, last.descriptors, kHandleSlack);
    compare("threads", first.threads, last.threads, 0);
    compare("GDI objects", first.drawing, last.drawing, kDrawingSlack);
    compare("bytes on the heap", first.heap, last.heap, kHeapSlack);
}

void HoldingsWatch::compare(const char* what, std::int64_t before, std::int64_t now,
                            std::int64_t allowed)
{
    if (now > before + allowed)
        run.findings.add(
            "unloading " + std::to_string(rests.size() - 1),
            textOf(
                "%lld %s, where there were %lld at the first unloading and %lld more are granted",
                static_cast<long long>(now), what, static_cast<long long>(before),
                static_cast<long long>(allowed)));
}

void HoldingsWatch::sample(double minutes)
{
    if (const std::int64_t bytes = memoryHeld(); bytes >= 0 && samples.size() < samples.capacity())
        samples.push_back({minutes, bytes});
}

// Least squares.
HoldingsWatch::Line HoldingsWatch::line() const
{
    const auto begin = samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 3);
    const auto count = static_cast<double>(samples.end() - begin);
    if (count < 3.0)
        return {};
    double meanTime = 0.0, meanBytes = 0.0;
    for (auto each = begin; each != samples.end(); ++each) {
        meanTime += each->minutes / count;
        meanBytes += static_cast<double>(each->bytes) / count;
    }
    double rise = 0.0, spread = 0.0;
    for (auto each = begin; each != samples.end(); ++each) {
        const double time = each->minutes - meanTime;
        rise += time * (static_cast<double>(each->bytes) - meanBytes);
        spread += time * time;
    }
    return {spread > 0.0 ? rise / spread : 0.0, samples.back().minutes - begin->minutes};
}

void HoldingsWatch::judgeGrowth()
{
    // Under sanitizers memory that is given back is kept for a while, to tell late uses.
    if (kSanitized)
        return;
    const Line fitted = line();
    const double growth = fitted.bytesPerMinute * fitted.minutes / kMiB;
    if (growth > run.options.growthMiB)
        run.findings.add("the end",
                         textOf("the process has grown by %.1f MiB in the last %.1f "
                                "minutes, where %.1f MiB are granted",
                                growth, fitted.minutes, run.options.growthMiB));
}

std::string HoldingsWatch::row(const char* what, std::int64_t Holdings::*member) const
{
    constexpr std::size_t kColumns = 6;
    const std::int64_t before = rests.front().*member;
    if (before < 0)
        return textOf("  %-24s not known here\n", what);
    std::string text = textOf("  %-24s %9lld", what, static_cast<long long>(before));
    const std::size_t later = rests.size() - 1;
    const std::size_t columns = std::min(kColumns, later);
    for (std::size_t column = 1; column <= columns; ++column)
        text += textOf(" %9lld", static_cast<long long>(rests[later * column / columns].*member));
    return text + "\n";
}

std::string HoldingsWatch::report() const
{
    std::string text;
    if (!rests.empty()) {
        text += textOf("Library unloaded, %-7d first and later\n", static_cast<int>(rests.size()));
        text += row("bytes on the heap", &Holdings::heap);
        text += row("descriptors or handles", &Holdings::descriptors);
        text += row("threads", &Holdings::threads);
        text += row("GDI objects", &Holdings::drawing);
    }
    if (!samples.empty()) {
        const auto [least, most] =
            std::minmax_element(samples.begin(), samples.end(),
                                [](const Sample& a, const Sample& b) { return a.bytes < b.bytes; });
        const Line fitted = line();
        text += textOf("Memory of the process: %.1f to %.1f MiB; after the first third its line "
                       "rises by %+.3f MiB a minute\n",
                       static_cast<double>(least->bytes) / kMiB,
                       static_cast<double>(most->bytes) / kMiB, fitted.bytesPerMinute / kMiB);
    }
    return text;
}
