// Measures the plug-in's frequency response with stepped sines.
#pragma once

#include "tools/common/Progress.h"
#include "tools/measuring/Tone.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace tool {

struct ResponsePlan {
    double rate = 44100.0;  // Hz
    double level = -40.0;   // dBFS, the peak of the sine
    double fromHz = 10.0;
    double toHz = 0.0;  // 0: 90 % of half the rate
    int points = 240;   // at equal frequency ratios
    int blockSize = 512;
    bool midSide = false;  // mid and side instead of left and right
};

struct ResponsePoint {
    double hz;
    std::array<double, 2> db;       // left and right, or mid and side; kNothing for silence
    std::array<double, 2> degrees;  // reported latency removed, unwrapped
};

constexpr double kNothing = -200.0;  // dB

// At each frequency waits for the chain to settle, then compares output with input.
// `progress` gets fractions from 0 to 1.
std::vector<ResponsePoint> measureResponse(host::Plugin& plugin,
                                           const std::vector<Assignment>& settings,
                                           const ResponsePlan& plan,
                                           const std::function<void(double)>& progress);

}  // namespace tool
