#include "bench/Signals.h"

#include <cmath>
#include <random>

namespace {

// From -1 to 1.
float uniform(std::mt19937& random)
{
    return static_cast<float>(static_cast<double>(random()) / 2147483648.0 - 1.0);
}

StereoSignal empty(int frames)
{
    const std::vector<float> channel(static_cast<std::size_t>(frames));
    return {channel, channel};
}

// The sum of white noise through one-pole low-passes an octave and a half apart, which approximates
// a power spectrum of 1 / f.
class PinkNoise {
public:
    float next(std::mt19937& random)
    {
        float sum = 0.0f;
        float pole = 0.3f;
        for (float& state : states) {
            state += pole * (uniform(random) / std::sqrt(pole) - state);
            pole *= 0.35f;
            sum += state;
        }
        return sum;
    }

private:
    std::array<float, 6> states{};
};

}  // namespace

StereoSignal musicLikeNoise(int frames, double level)
{
    StereoSignal signal = empty(frames);
    std::mt19937 random(46);
    PinkNoise middle, sides[2];
    double energy = 0.0;
    for (std::size_t i = 0; i < signal[0].size(); ++i) {
        const float common = middle.next(random);
        for (std::size_t c = 0; c < 2; ++c) {
            signal[c][i] = common + sides[c].next(random);
            energy += static_cast<double>(signal[c][i]) * static_cast<double>(signal[c][i]);
        }
    }
    const auto scale = static_cast<float>(level / std::sqrt(energy / (2.0 * frames)));
    for (std::vector<float>& channel : signal)
        for (float& x : channel)
            x *= scale;
    return signal;
}

StereoSignal squareWave(int frames)
{
    StereoSignal signal = empty(frames);
    for (std::vector<float>& channel : signal)
        for (std::size_t i = 0; i < channel.size(); ++i)
            channel[i] = i % 48 < 24 ? 1.0f : -1.0f;
    return signal;
}

StereoSignal silence(int frames)
{
    return empty(frames);
}

StereoSignal tinyNoise(int frames)
{
    StereoSignal signal = empty(frames);
    std::mt19937 random(40);
    for (std::vector<float>& channel : signal)
        for (float& x : channel)
            x = static_cast<float>(1e-40 * static_cast<double>(uniform(random)));
    return signal;
}
