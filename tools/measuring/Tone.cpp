#include "tools/measuring/Tone.h"

#include <algorithm>
#include <cmath>

namespace tool {

namespace {

constexpr double kTwoPi = 6.283185307179586;

}  // namespace

WindowedTone windowedTone(double wantedHz, double rate, int minPeriods, double minSeconds)
{
    const double periods =
        std::max(static_cast<double>(minPeriods), std::ceil(wantedHz * minSeconds));
    const std::int64_t samples = std::llround(periods * rate / wantedHz);
    return {periods * rate / static_cast<double>(samples), samples};
}

std::complex<double> projection(const std::vector<float>& signal, std::size_t start,
                                std::int64_t samples, double hz, double rate)
{
    const double step = kTwoPi * hz / rate;
    const double windowStep = kTwoPi / static_cast<double>(samples);
    std::complex<double> sum = 0.0;
    for (std::int64_t n = 0; n < samples; ++n) {
        const double t = static_cast<double>(n);
        const double window = 1.0 - std::cos(windowStep * t);  // its mean is 1
        sum += window * static_cast<double>(signal[start + static_cast<std::size_t>(n)])
            * std::polar(1.0, -step * t);
    }
    return 2.0 * sum / static_cast<double>(samples);
}

TonePlayer::Take TonePlayer::play(double hz, double amplitude, std::int64_t samples,
                                  double rightSign)
{
    Take take;
    take.input.assign(2, std::vector<float>(static_cast<std::size_t>(samples)));
    for (std::size_t n = 0; n < take.input[0].size(); ++n) {
        const double value = amplitude * std::sin(phase);
        take.input[0][n] = static_cast<float>(value);
        take.input[1][n] = static_cast<float>(rightSign * value);
        phase = std::fmod(phase + kTwoPi * hz / rate, kTwoPi);
    }
    take.output = run.process(take.input);
    return take;
}

double amplitudeOf(double dbfs)
{
    return std::pow(10.0, dbfs / 20.0);
}

}  // namespace tool
