// Test signals of the benchmarks.
#pragma once

#include <array>
#include <vector>

using StereoSignal = std::array<std::vector<float>, 2>;

// Pink noise (about -3 dB per octave, as music) of an RMS level, -12 dBFS by default; the channels
// are half correlated.
StereoSignal musicLikeNoise(int frames, double level = 0.251188643150958);

// 1 kHz at 48 kHz, from -1 to 1.
StereoSignal squareWave(int frames);

StereoSignal silence(int frames);

// Noise at 1e-40, which is denormal as a float and below the flush threshold of every filter.
StereoSignal tinyNoise(int frames);
