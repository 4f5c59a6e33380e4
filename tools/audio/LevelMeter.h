// LevelMeter: peak, RMS, and loudness after EBU R 128 (ITU-R BS.1770-4).
#pragma once

#include "tools/audio/TruePeak.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <ebur128.h>

namespace tool {

struct Loudness {
    double integrated;        // LUFS; -inf for audio that is silent or shorter than 0.4 s
    double range;             // LU
    double shortTermMaximum;  // LUFS, of 3 s; -inf for shorter audio
    double truePeak;          // linear
};

struct Levels {
    double peak = 0.0;                 // linear
    double rms = 0.0;                  // linear, of all channels together
    std::optional<Loudness> loudness;  // if the meter measures it
};

// In dB; -inf for 0.
double decibels(double linear);

class LevelMeter {
public:
    // `rate` in Hz. Loudness takes longer than everything else, so it is measured on demand.
    // `playedTwice`: the one channel will be played on both sides of a stereo pair.
    LevelMeter(int channels, int rate, bool withLoudness, bool playedTwice = false);

    // Interleaved samples. Those that are not finite count as 0.
    void add(const float* interleaved, std::int64_t frames);
    // Of everything added so far.
    Levels levels();

private:
    void addLoudness();

    struct Close {
        void operator()(ebur128_state* state) const;
    };
    std::size_t channels;
    double peak, sumOfSquares;
    std::int64_t sampleCount;
    std::unique_ptr<ebur128_state, Close> state;  // null without loudness
    std::vector<TruePeak> truePeaks;              // of each channel
    std::vector<float> pending;                   // less than 0.1 s, after which it is read
    std::size_t interval;                         // samples in 0.1 s
    std::int64_t framesToShortTerm;               // left until the first 3 s are complete
    double shortTermMaximum;                      // LUFS
};

}  // namespace tool
