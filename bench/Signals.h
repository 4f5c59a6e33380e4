// What is played to the forms.
#pragma once

#include <array>
#include <vector>

using StereoSignal = std::array<std::vector<float>, 2>;

// Noise that falls by about 3 dB an octave, like music does, at -12 dBFS RMS; the channels are
// half alike.
StereoSignal musicLikeNoise(int frames);

StereoSignal silence(int frames);

// Noise at 1e-40, which is denormal as a float and far below what any filter lets through.
StereoSignal tinyNoise(int frames);
