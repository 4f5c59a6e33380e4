// Noise for tests: white, between -0.5 and 0.5, the same for the same seed.
#pragma once

#include <cstddef>
#include <vector>

inline std::vector<float> noise(std::size_t length, unsigned seed)
{
    std::vector<float> signal(length);
    for (float& x : signal) {
        seed = seed * 1664525u + 1013904223u;
        x = 0.5f * (static_cast<float>(seed >> 8) / 8388608.0f - 1.0f);
    }
    return signal;
}
