// Quantizer: floats to integers of a given word length, with dither.
#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <vector>

namespace tool {

enum class Dither {
    None,
    // Noise with a triangular distribution from -1 to 1 step, which makes the error independent of
    // the signal: its mean is 0 and its power constant, together with the rounding 1/4 step^2.
    Triangular,
    // The same noise with the error shaped towards frequencies where the ear is less sensitive.
    Shaped,
};

class Quantizer {
public:
    // `bits` 2 to 32, `rate` in Hz. The noise is the same in every run.
    Quantizer(int bits, Dither dither, int channels, int rate);

    // Writes the value of each interleaved sample into the upper bits of an integer. Samples beyond
    // full scale are limited and counted; NaN becomes 0.
    void quantize(const float* interleaved, std::int64_t count, int* integers);
    std::int64_t clipped() const { return clippedCount; }

private:
    static constexpr std::size_t kOrder = 5;

    int unusedBits;
    double fullScale;
    Dither dither;
    std::array<double, kOrder> feedback;             // of the last errors, the newest first
    std::vector<std::array<double, kOrder>> errors;  // of each channel
    std::size_t channel;
    std::mt19937 random;
    std::int64_t clippedCount;
};

}  // namespace tool
