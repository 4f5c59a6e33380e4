// How long blocks take, as shares of their own real time.
#pragma once

#include "System.h"

#include <array>
#include <cstddef>

// Blocks of similar length together, since short ones cost more for each sample.
struct BlockLengths {
    const char* name;
    int longest;
};
constexpr std::array<BlockLengths, 4> kBlockLengths{{
    {"1 to 16", 16},
    {"17 to 128", 128},
    {"129 to 1024", 1024},
    {"over 1024", 1 << 30},
}};

// Counts in buckets that grow by 4.4 %; nothing is allocated.
class ShareCounts {
public:
    void add(double processorShare, double clockShare);
    void add(const ShareCounts& others);
    long long count() const { return total; }
    // The share that this part of all blocks stays below, to the bucket's end.
    double quantile(double part) const;
    double longest() const { return mostProcessor; }
    double longestByTheClock() const { return mostClock; }

private:
    static constexpr int kPerOctave = 16, kOctavesBelow = 20, kOctaves = 40;

    std::array<long long, static_cast<std::size_t>(kPerOctave* kOctaves)> buckets{};
    long long total = 0;
    double mostProcessor = 0.0, mostClock = 0.0;
};

// Beyond its own real time, in seconds: where a host with small buffers would be heard.
constexpr double kLate = 0.005;

// Of one thread.
class BlockTimes {
public:
    // False when the block took far longer than any block may.
    bool add(int samples, double rate, const Effort& effort);
    void add(const BlockTimes& others);
    const ShareCounts& of(std::size_t lengths) const { return counts[lengths]; }
    long long late() const { return lateBlocks; }
    long long count() const;

private:
    long long lateBlocks = 0;
    std::array<ShareCounts, kBlockLengths.size()> counts;
};
