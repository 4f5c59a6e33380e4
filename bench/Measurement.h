// Timing of several forms of the same work on a machine with other processes: the forms take turns,
// everything is repeated, and the shortest time of each piece of work counts.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <vector>

// FNV-1a over the bits of a signal.
class Hash {
public:
    template <typename Sample>
    void add(const Sample* x, int count)
    {
        addBytes(x, sizeof(Sample) * static_cast<std::size_t>(count));
    }
    std::uint64_t value() const { return bits; }

private:
    void addBytes(const void* bytes, std::size_t size);

    std::uint64_t bits = 0xcbf29ce484222325u;
};

template <typename Work>
double nanosecondsOf(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start)
        .count();
}

// The shortest time of each piece of work over several repetitions, in nanoseconds.
class ShortestTimes {
public:
    void record(std::size_t piece, double nanoseconds);
    // The mean and the maximum over the pieces, of which there is at least one.
    double mean() const;
    double longest() const;

private:
    std::vector<double> pieces;
};
