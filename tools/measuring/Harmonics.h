// Measures the harmonics that the plug-in adds to a sine.
#pragma once

#include "tools/measuring/Tone.h"

#include <array>
#include <functional>
#include <vector>

namespace tool {

constexpr int kMaxHarmonic = 10;

// One channel's output for a tone. Index 0 of `db` is the second harmonic.
struct ChannelHarmonics {
    double fundamentalDb;                              // dBFS, the peak of the sine
    std::array<double, kMaxHarmonic - 1> db;           // relative to the fundamental
    std::array<bool, kMaxHarmonic - 1> belowHalfRate;  // only these are measured
    double thd;  // root of the sum of the squares of all harmonics, relative to the fundamental
};

struct HarmonicsPoint {
    double level;  // dBFS, of the tone sent in
    double hz;     // of the tone, adjusted to the window
    std::array<ChannelHarmonics, 2> channels;
};

struct HarmonicsPlan {
    double rate = 44100.0;  // Hz
    double hz = 50.0;
    int blockSize = 512;
    std::vector<double> levels;  // dBFS
};

std::vector<HarmonicsPoint> measureHarmonics(host::Plugin& plugin,
                                             const std::vector<Assignment>& settings,
                                             const HarmonicsPlan& plan,
                                             const std::function<void(double)>& progress);

}  // namespace tool
