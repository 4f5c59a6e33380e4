#include "tools/measuring/Harmonics.h"

#include <cmath>

namespace tool {

namespace {

// Long enough to measure weak harmonics below the rounding noise of 32-bit samples.
constexpr double kWindowSeconds = 0.6;
constexpr int kWindowPeriods = 12;

// Parameter ramps have to end, and the offset of the transformer curves to decay in the 5 Hz
// high-pass.
constexpr double kToneSettleSeconds = 0.8;

// Linear; below the resolution of 32-bit samples.
constexpr double kFloor = 1e-10;

double decibels(double linear)
{
    return 20.0 * std::log10(std::max(linear, kFloor));
}

ChannelHarmonics analyse(const std::vector<float>& signal, std::size_t start,
                         const WindowedTone& tone, double rate)
{
    ChannelHarmonics result{};
    const double fundamental = std::abs(projection(signal, start, tone.samples, tone.hz, rate));
    result.fundamentalDb = decibels(fundamental);
    double power = 0.0;
    for (int harmonic = 2; harmonic <= kMaxHarmonic; ++harmonic) {
        const auto place = static_cast<std::size_t>(harmonic - 2);
        const double hz = harmonic * tone.hz;
        result.belowHalfRate[place] = hz < 0.5 * rate;
        if (!result.belowHalfRate[place])
            continue;
        const double ratio = std::abs(projection(signal, start, tone.samples, hz, rate))
            / std::max(fundamental, kFloor);
        result.db[place] = decibels(ratio);
        power += ratio * ratio;
    }
    result.thd = std::sqrt(power);
    return result;
}

}  // namespace

std::vector<HarmonicsPoint> measureHarmonics(host::Plugin& plugin,
                                             const std::vector<Assignment>& settings,
                                             const HarmonicsPlan& plan,
                                             const std::function<void(double)>& progress)
{
    PluginRun run(plugin, plan.rate, plan.blockSize, 2, 2);
    run.set(settings);
    run.processSilence(std::llround(kSettleSeconds * plan.rate));
    TonePlayer player(run, plan.rate);
    const WindowedTone tone = windowedTone(plan.hz, plan.rate, kWindowPeriods, kWindowSeconds);
    const std::int64_t settle = std::llround(kToneSettleSeconds * plan.rate);
    std::vector<HarmonicsPoint> points;
    for (const double level : plan.levels) {
        const TonePlayer::Take take =
            player.play(tone.hz, amplitudeOf(level), settle + tone.samples);
        HarmonicsPoint point{};
        point.level = level;
        point.hz = tone.hz;
        for (std::size_t channel = 0; channel < 2; ++channel)
            point.channels[channel] =
                analyse(take.output[channel], static_cast<std::size_t>(settle), tone, plan.rate);
        points.push_back(point);
        progress(static_cast<double>(points.size()) / static_cast<double>(plan.levels.size()));
    }
    return points;
}

}  // namespace tool
