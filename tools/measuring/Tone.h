// Sine tones through the plug-in, and how much of a frequency is in what comes back.
#pragma once

#include "tools/audio/PluginRun.h"

#include <array>
#include <complex>
#include <cstdint>
#include <vector>

namespace tool {

// A frequency close to the wanted one, of which a whole number of periods fills the window exactly.
// Harmonics of the tone then fall on zeros of the window's spectrum and leave each other alone.
struct WindowedTone {
    double hz;
    std::int64_t samples;  // the window's length
};
WindowedTone windowedTone(double wantedHz, double rate, int fewestPeriods, double shortestSeconds);

// The Hann-windowed part of `signal` at `hz`, as the complex amplitude of a cosine whose phase
// counts from sample `start`. The window must hold whole periods of `hz`.
std::complex<double> projection(const std::vector<float>& signal, std::size_t start,
                                std::int64_t samples, double hz, double rate);

// Plays sines on both channels of a stereo run, without a break in phase between one and the next.
class TonePlayer {
public:
    TonePlayer(PluginRun& run, double rate) : plugin(run), sampleRate(rate), phase(0.0) { }

    struct Take {
        Channels input;
        Channels output;
    };
    // `rightSign` +1 plays the same on both channels, -1 the opposite on the right.
    Take play(double hz, double amplitude, std::int64_t samples, double rightSign = 1.0);

private:
    PluginRun& plugin;
    double sampleRate;
    double phase;  // radians
};

// Seconds for a parameter change to have glided into place, and the chain with it.
constexpr double kSettleSeconds = 0.6;

double amplitudeOf(double dbfs);

}  // namespace tool
