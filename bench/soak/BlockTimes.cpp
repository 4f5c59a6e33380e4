// Buckets of shares, and the judgement of one block.
#include "BlockTimes.h"

#include <algorithm>
#include <cmath>

void ShareCounts::add(double processorShare, double clockShare)
{
    const double place = (std::log2(std::max(processorShare, 1e-9)) + kOctavesBelow) * kPerOctave;
    const int last = static_cast<int>(buckets.size()) - 1;
    ++buckets[static_cast<std::size_t>(std::clamp(static_cast<int>(place), 0, last))];
    ++total;
    mostProcessor = std::max(mostProcessor, processorShare);
    mostClock = std::max(mostClock, clockShare);
}

void ShareCounts::add(const ShareCounts& others)
{
    for (std::size_t i = 0; i < buckets.size(); ++i)
        buckets[i] += others.buckets[i];
    total += others.total;
    mostProcessor = std::max(mostProcessor, others.mostProcessor);
    mostClock = std::max(mostClock, others.mostClock);
}

double ShareCounts::quantile(double part) const
{
    const double wanted = part * static_cast<double>(total);
    long long seen = 0;
    for (std::size_t i = 0; i < buckets.size(); ++i) {
        seen += buckets[i];
        if (static_cast<double>(seen) >= wanted)
            return std::exp2(static_cast<double>(i + 1) / kPerOctave - kOctavesBelow);
    }
    return mostProcessor;
}

// A neighbour on the machine may hold a thread up at any moment; what the thread itself does, or
// waits for, is the plug-in's own.
bool BlockTimes::add(int samples, double rate, const Effort& effort)
{
    const double realTime = samples / rate;
    std::size_t lengths = 0;
    while (samples > kBlockLengths[lengths].longest)
        ++lengths;
    counts[lengths].add(effort.processor / realTime, effort.clock / realTime);
    lateBlocks += effort.processor > realTime + kLate ? 1 : 0;
    const double limit = realTime + kBlockPatience;
    return effort.processor <= limit && !(effort.waited && effort.clock > limit);
}

long long BlockTimes::count() const
{
    long long sum = 0;
    for (const ShareCounts& each : counts)
        sum += each.count();
    return sum;
}

void BlockTimes::add(const BlockTimes& others)
{
    lateBlocks += others.lateBlocks;
    for (std::size_t i = 0; i < counts.size(); ++i)
        counts[i].add(others.counts[i]);
}
