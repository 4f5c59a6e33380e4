// Sine tones for measuring, and the projection of a signal on a frequency.
#pragma once

#include "tools/audio/PluginRun.h"

#include <array>
#include <complex>
#include <cstdint>
#include <vector>

namespace tool {

// A frequency close to the wanted one with a whole number of periods in the window. Its harmonics
// then fall on zeros of the window's spectrum and do not affect each other.
struct WindowedTone {
    double hz;
    std::int64_t samples;  // the window's length
};
WindowedTone windowedTone(double wantedHz, double rate, int minPeriods, double minSeconds);

// The component of the Hann-windowed `signal` at `hz`, as the complex amplitude of a cosine with
// phase 0 at sample `start`. The window must hold whole periods of `hz`.
std::complex<double> projection(const std::vector<float>& signal, std::size_t start,
                                std::int64_t samples, double hz, double rate);

// Plays sines on both channels of a stereo run; the phase is continuous from one to the next.
class TonePlayer {
public:
    TonePlayer(PluginRun& run, double rate) : run(run), rate(rate), phase(0.0) { }

    struct Take {
        Channels input;
        Channels output;
    };
    // The right channel gets the tone times `rightSign`: 1 for mid, -1 for side.
    Take play(double hz, double amplitude, std::int64_t samples, double rightSign = 1.0);

private:
    PluginRun& run;
    double rate;   // Hz
    double phase;  // radians
};

// Parameter ramps, and the chain's response to them, end within this time.
constexpr double kSettleSeconds = 0.6;

double amplitudeOf(double dbfs);

}  // namespace tool
