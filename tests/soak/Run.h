// What all parts of a run share: options, findings and random numbers.
#pragma once

#include <atomic>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <random>
#include <string>
#include <vector>

struct Run {
    std::string library;
    int instances = 8;
    double minutes = 1.0;
    std::uint32_t seed = std::random_device{}();
    std::vector<int> blockSizes{16, 32, 64, 100, 128, 256, 441, 512, 1024, 2048, 4096};
    int audioThreads = 2;
    bool editors = false;
    double growthMiB = 32.0;    // allowed growth of the process after its first third
    double hangSeconds = 30.0;  // a thread without progress for longer hangs

    std::atomic<int> failures{0};
    std::atomic<bool> interrupted{false};

    // From any thread: prints the seed, the step and the finding. Only the first ones are printed,
    // since one fault often causes many.
    void fail(const std::string& step, const std::string& seen)
    {
        constexpr int kMaxPrinted = 12;
        std::fflush(stdout);
        if (++failures <= kMaxPrinted)
            std::fprintf(stderr, "FAILURE seed %u, %s: %s\n", seed, step.c_str(), seen.c_str());
    }
    bool mustEnd() const { return interrupted || failures > 0; }
};

// printf into a string.
__attribute__((format(printf, 1, 2))) inline std::string textOf(const char* pattern, ...)
{
    char text[400];
    va_list values;
    va_start(values, pattern);
    std::vsnprintf(text, sizeof text, pattern, values);
    va_end(values);
    return text;
}

// Random numbers, the same for the same seed on every system.
class Random {
public:
    // Each stream of a seed is an independent sequence.
    Random(std::uint32_t seed, std::uint32_t stream)
    {
        std::seed_seq sequence{seed, stream};
        engine.seed(sequence);
    }

    std::uint32_t bits() { return static_cast<std::uint32_t>(engine()); }
    // 0 to n - 1; n is above 0.
    int below(std::size_t n) { return static_cast<int>(bits() % n); }
    int between(int least, int most)
    {
        return least + below(static_cast<std::size_t>(most - least + 1));
    }
    bool oneIn(int n) { return between(1, n) == 1; }
    // 0 to 1.
    float position() { return static_cast<float>(bits() >> 8) / 16777215.0f; }
    template <typename Things>
    auto& of(Things& things)
    {
        return things[static_cast<std::size_t>(below(std::size(things)))];
    }

private:
    std::mt19937 engine;
};
