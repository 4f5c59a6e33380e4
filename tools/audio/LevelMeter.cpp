#include "tools/audio/LevelMeter.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

namespace tool {

namespace {

constexpr int kReadingsPerSecond = 10;
constexpr int kShortTermSeconds = 3;
constexpr double kSilence = -std::numeric_limits<double>::infinity();

}  // namespace

void LevelMeter::Close::operator()(ebur128_state* state) const
{
    ebur128_destroy(&state);
}

double decibels(double linear)
{
    return 20.0 * std::log10(linear);
}

LevelMeter::LevelMeter(int channels, int rate, bool withLoudness, bool playedTwice)
    : channels(static_cast<std::size_t>(channels)), peak(0.0), sumOfSquares(0.0), sampleCount(0),
      interval(this->channels * static_cast<std::size_t>(rate / kReadingsPerSecond)),
      framesToShortTerm(std::int64_t{kShortTermSeconds} * rate), shortTermMaximum(kSilence)
{
    if (!withLoudness)
        return;
    state.reset(ebur128_init(static_cast<unsigned>(channels), static_cast<unsigned long>(rate),
                             EBUR128_MODE_I | EBUR128_MODE_LRA));
    if (!state)
        throw std::bad_alloc();
    if (playedTwice && ebur128_set_channel(state.get(), 0, EBUR128_DUAL_MONO) != EBUR128_SUCCESS)
        throw std::bad_alloc();
    truePeaks.assign(this->channels, TruePeak(rate));
}

void LevelMeter::add(const float* interleaved, std::int64_t frames)
{
    const auto count = static_cast<std::size_t>(frames) * channels;
    for (std::size_t i = 0; i < count; ++i) {
        const float sample = std::isfinite(interleaved[i]) ? interleaved[i] : 0.0f;
        const auto value = static_cast<double>(sample);
        peak = std::max(peak, std::fabs(value));
        sumOfSquares += value * value;
        if (!state)
            continue;
        pending.push_back(sample);
        if (pending.size() == interval)
            addLoudness();
    }
    sampleCount += static_cast<std::int64_t>(count);
}

void LevelMeter::addLoudness()
{
    ebur128_add_frames_float(state.get(), pending.data(), pending.size() / channels);
    std::vector<float> one(pending.size() / channels);
    for (std::size_t channel = 0; channel < channels; ++channel) {
        for (std::size_t i = 0; i < one.size(); ++i)
            one[i] = pending[i * channels + channel];
        truePeaks[channel].add(one.data(), one.size());
    }
    framesToShortTerm -= static_cast<std::int64_t>(one.size());
    pending.clear();
    double shortTerm = 0.0;
    if (framesToShortTerm <= 0
        && ebur128_loudness_shortterm(state.get(), &shortTerm) == EBUR128_SUCCESS)
        shortTermMaximum = std::max(shortTermMaximum, shortTerm);
}

Levels LevelMeter::levels()
{
    Levels result;
    result.peak = peak;
    if (sampleCount > 0)
        result.rms = std::sqrt(sumOfSquares / static_cast<double>(sampleCount));
    if (!state)
        return result;
    addLoudness();
    Loudness loudness{kSilence, 0.0, shortTermMaximum, 0.0};
    ebur128_loudness_global(state.get(), &loudness.integrated);
    ebur128_loudness_range(state.get(), &loudness.range);
    for (TruePeak& channel : truePeaks)
        loudness.truePeak = std::max(loudness.truePeak, channel.peak());
    result.loudness = loudness;
    return result;
}

}  // namespace tool
