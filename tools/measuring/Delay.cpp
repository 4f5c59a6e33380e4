#include "tools/measuring/Delay.h"

#include <algorithm>
#include <cmath>

namespace tool {

namespace {

// Parameter ramps end within this time.
constexpr double kSettleSeconds = 0.3;
constexpr int kRecordedSamples = 1024;
constexpr int kImpulseAt = 100;  // samples; at no block boundary except with block size 1
constexpr float kImpulse = 0.25f;

int delayOf(const std::vector<float>& output)
{
    const auto peak = std::max_element(
        output.begin(), output.end(), [](float x, float y) { return std::fabs(x) < std::fabs(y); });
    return static_cast<int>(peak - output.begin()) - kImpulseAt;
}

}  // namespace

Delay measureDelay(host::Plugin& plugin, double rate, int blockSize,
                   const std::vector<Assignment>& settings)
{
    PluginRun run(plugin, rate, blockSize, 2, 2);
    const int reported = run.latency();
    run.set(settings);
    run.processSilence(std::llround(kSettleSeconds * rate));
    Channels input(2, std::vector<float>(kRecordedSamples));
    input[0][kImpulseAt] = input[1][kImpulseAt] = kImpulse;
    const Channels output = run.process(input);
    const int left = delayOf(output[0]);
    return {reported, left == reported ? delayOf(output[1]) : left};
}

}  // namespace tool
