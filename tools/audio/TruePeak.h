// TruePeak: the peak of the continuous signal between the samples (ITU-R BS.1770-4, annex 2).
#pragma once

#include <cstddef>
#include <vector>

namespace tool {

class TruePeak {
public:
    // One channel; `rate` in Hz. Below 96 kHz the signal is interpolated fourfold, below 192 kHz
    // twofold, and above its samples are taken. The interpolator is flat to 0.93 of half the rate.
    explicit TruePeak(int rate);

    void add(const float* samples, std::size_t count);
    // Linear, of everything added; the last half of the interpolator's length counts as silence.
    double peak();

private:
    void interpolate(std::size_t count);

    std::vector<std::vector<float>> phases;  // coefficients for each place between two samples
    std::vector<float> line;                 // the last samples, then the new ones
    float highest;
    float gain;  // the most by which an interpolated place can exceed the samples around it
};

}  // namespace tool
