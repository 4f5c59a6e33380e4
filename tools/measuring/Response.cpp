#include "tools/measuring/Response.h"

#include <algorithm>
#include <cmath>
#include <complex>

namespace tool {

namespace {

constexpr double kTwoPi = 6.283185307179586;

// After a step to the next frequency, the transient of the chain's 5 Hz high-pass, its slowest
// part, decays within this time.
constexpr double kStepSettleSeconds = 0.12;
constexpr double kWindowSeconds = 0.06;
constexpr int kWindowPeriods = 4;

using Complex = std::complex<double>;

// The mid (sum) or side (difference) component of both channels.
Complex combined(const Channels& channels, bool side, const WindowedTone& tone, std::size_t start,
                 double rate)
{
    const Complex left = projection(channels[0], start, tone.samples, tone.hz, rate);
    const Complex right = projection(channels[1], start, tone.samples, tone.hz, rate);
    return side ? left - right : left + right;
}

void store(ResponsePoint& point, std::size_t channel, Complex gain)
{
    const double magnitude = std::abs(gain);
    point.db[channel] = magnitude > 1e-10 ? 20.0 * std::log10(magnitude) : kNothing;
    point.degrees[channel] = magnitude > 1e-10 ? std::arg(gain) * 360.0 / kTwoPi : 0.0;
}

// Removes jumps of 360 degrees, and shifts the curve so that its middle point is within 180
// degrees.
void unwrap(std::vector<ResponsePoint>& points, std::size_t channel)
{
    for (std::size_t i = 1; i < points.size(); ++i) {
        const double jump = points[i].degrees[channel] - points[i - 1].degrees[channel];
        points[i].degrees[channel] -= 360.0 * std::round(jump / 360.0);
    }
    const double middle = points[points.size() / 2].degrees[channel];
    const double turns = 360.0 * std::round(middle / 360.0);
    for (ResponsePoint& point : points)
        point.degrees[channel] -= turns;
}

}  // namespace

std::vector<ResponsePoint> measureResponse(host::Plugin& plugin,
                                           const std::vector<Assignment>& settings,
                                           const ResponsePlan& plan,
                                           const std::function<void(double)>& progress)
{
    const double top = plan.toHz > 0.0 ? plan.toHz : 0.45 * plan.rate;
    const auto count = static_cast<std::size_t>(plan.points);
    std::vector<ResponsePoint> points(count);
    const int passes = plan.midSide ? 2 : 1;
    double done = 0.0;
    for (int pass = 0; pass < passes; ++pass) {
        const bool side = pass == 1;
        PluginRun run(plugin, plan.rate, plan.blockSize, 2, 2);
        run.set(settings);
        run.processSilence(std::llround(kSettleSeconds * plan.rate));
        TonePlayer player(run, plan.rate);
        const double latency = run.latency();
        for (std::size_t i = 0; i < count; ++i) {
            const double position = static_cast<double>(i) / static_cast<double>(count - 1);
            const double wanted = plan.fromHz * std::pow(top / plan.fromHz, position);
            const WindowedTone tone =
                windowedTone(wanted, plan.rate, kWindowPeriods, kWindowSeconds);
            const double settleSeconds = i == 0 ? kSettleSeconds : kStepSettleSeconds;
            const std::int64_t settle = std::llround(settleSeconds * plan.rate);
            const TonePlayer::Take take = player.play(tone.hz, amplitudeOf(plan.level),
                                                      settle + tone.samples, side ? -1.0 : 1.0);

            const auto start = static_cast<std::size_t>(settle);
            const Complex delay = std::polar(1.0, kTwoPi * tone.hz / plan.rate * latency);
            points[i].hz = tone.hz;
            if (plan.midSide) {
                const Complex in = combined(take.input, side, tone, start, plan.rate);
                const Complex out = combined(take.output, side, tone, start, plan.rate);
                store(points[i], side ? 1 : 0, delay * out / in);
            } else {
                for (std::size_t channel = 0; channel < 2; ++channel) {
                    const Complex in =
                        projection(take.input[channel], start, tone.samples, tone.hz, plan.rate);
                    const Complex out =
                        projection(take.output[channel], start, tone.samples, tone.hz, plan.rate);
                    store(points[i], channel, delay * out / in);
                }
            }
            done += 1.0;
            progress(done / static_cast<double>(count * static_cast<std::size_t>(passes)));
        }
    }
    unwrap(points, 0);
    unwrap(points, 1);
    return points;
}

}  // namespace tool
