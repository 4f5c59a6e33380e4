// Failures of the plug-in, told at once and counted.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>

class Findings {
public:
    explicit Findings(std::uint32_t seed) : runSeed(seed) { }

    // From any thread: prints the seed, the step and what was seen there. The first ones only; a
    // fault comes seldom alone.
    void add(const std::string& step, const std::string& seen);
    int count() const { return found; }
    std::uint32_t seed() const { return runSeed; }

private:
    const std::uint32_t runSeed;
    std::mutex printing;
    std::atomic<int> found{0};
};

// printf into a string.
std::string textOf(const char* pattern, ...) __attribute__((format(printf, 1, 2)));
