// Chance that comes out the same for the same seed on every system.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

class Dice {
public:
    // Each stream of a seed is a row of its own.
    Dice(std::uint32_t seed, std::uint32_t stream)
    {
        std::seed_seq sequence{seed, stream};
        engine.seed(sequence);
    }

    std::uint32_t bits() { return static_cast<std::uint32_t>(engine()); }
    // 0 to n - 1; n is above 0.
    int below(int n) { return static_cast<int>(bits() % static_cast<std::uint32_t>(n)); }
    int between(int least, int most) { return least + below(most - least + 1); }
    bool oneIn(int n) { return below(n) == 0; }
    // 0 to 1.
    float position() { return static_cast<float>(bits() >> 8) / 16777215.0f; }
    // -1 to 1.
    float sample() { return 2.0f * position() - 1.0f; }
    template <typename Thing>
    const Thing& of(const std::vector<Thing>& things)
    {
        return things[static_cast<std::size_t>(below(static_cast<int>(things.size())))];
    }

private:
    std::mt19937 engine;
};
