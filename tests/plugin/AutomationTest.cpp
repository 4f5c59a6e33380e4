// Long random automation of every parameter at every rate: the output stays finite and bounded, and
// silence takes no more processor time than music.
//
// ZKR_AUTOMATION_SECONDS sets how much audio each rate gets (10 s unless told otherwise).
#include "tests/support/Noise.h"
#include "tests/support/Stream.h"
#include "tools/host/NativePlugin.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

namespace {

constexpr std::size_t kBlock = 512;

// The largest magnitude; NaN if any sample is not finite.
float loudest(const std::vector<Signal>& sound)
{
    float largest = 0.0f;
    for (const Signal& channel : sound)
        for (const float x : channel) {
            if (!std::isfinite(x))
                return std::numeric_limits<float>::quiet_NaN();
            largest = std::max(largest, std::abs(x));
        }
    return largest;
}

// Time of the fastest of many blocks, in seconds, which other processes disturb least.
double fastestBlock(host::Plugin& plugin, const Signal& sound)
{
    const std::vector<Signal> in(2, sound);
    double fastest = 1e9;
    for (int block = 0; block < 400; ++block) {
        const auto start = std::chrono::steady_clock::now();
        stream(plugin, in);
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        fastest = std::min(fastest, taken.count());
    }
    return fastest;
}

}  // namespace

class Automation : public testing::TestWithParam<double> { };

// With the amplifiers switched off, six bands of up to 17 dB, 16 dB of output gain and the 6 dB of
// "Middle" can add up to 124 dB. An unstable filter soon exceeds that.
constexpr float kBound = 1.6e6f;

TEST_P(Automation, OfEveryParameterKeepsEverySampleFiniteAndBounded)
{
    host::NativePlugin plugin(ZKR_PLUGIN);
    plugin.setSampleRate(GetParam());
    plugin.mainsOn();
    std::mt19937 random(static_cast<unsigned>(GetParam()));
    std::uniform_real_distribution<float> position(0.0f, 1.0f);
    const char* const asked = std::getenv("ZKR_AUTOMATION_SECONDS");
    const double seconds = asked ? std::atof(asked) : 10.0;
    for (double done = 0.0; done < seconds;) {
        // A few parameters in most blocks, all of them in some; values include ends and steps.
        const bool all = random() % 50 == 0;
        for (VstInt32 i = 0; i < 58; ++i) {
            if (!all && random() % 20 != 0)
                continue;
            const float value = position(random);
            plugin.setParameter(i, random() % 4 ? value : std::round(value * 9.0f) / 9.0f);
        }
        const std::size_t frames = random() % 4 ? kBlock : 1 + random() % kBlock;
        std::vector<Signal> in{noise(frames, static_cast<unsigned>(random())),
                               noise(frames, static_cast<unsigned>(random()))};
        if (random() % 100 == 0) {
            in[0][random() % frames] = std::numeric_limits<float>::infinity();
            in[1][random() % frames] = std::numeric_limits<float>::quiet_NaN();
        }
        const float loud = loudest(stream(plugin, in));
        ASSERT_TRUE(std::isfinite(loud)) << "after " << done << " s";
        ASSERT_LT(loud, kBound) << "after " << done << " s";
        done += static_cast<double>(frames) / GetParam();
    }

    // Silence lets the filters decay: the slowest, at 5 Hz, falls by 1 / e in 32 ms.
    const Signal silence(static_cast<std::size_t>(3 * GetParam()));
    stream(plugin, {silence, silence});
    EXPECT_LT(loudest(stream(plugin, {Signal(kBlock), Signal(kBlock)})), 1e-6f);
}

INSTANTIATE_TEST_SUITE_P(Rates, Automation,
                         testing::Values(44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0));

// Everything is switched on, so that every filter runs. Other processes delay single blocks, so the
// fastest of many is compared; denormal numbers would take many times as long.
TEST(Silence, TakesNoLongerThanMusicOnceTheFiltersHaveDecayed)
{
    host::NativePlugin plugin(ZKR_PLUGIN);
    plugin.setSampleRate(48000.0);
    plugin.mainsOn();
    for (VstInt32 i = 5; i < 58; ++i)
        plugin.setParameter(i, 0.67f);
    for (const VstInt32 disable : {18, 19, 20, 21})
        plugin.setParameter(disable, 0.0f);
    const double music = fastestBlock(plugin, noise(kBlock, 1));
    for (const float level : {0.0f, 1e-40f}) {
        fastestBlock(plugin, Signal(kBlock, level));
        const double silence = fastestBlock(plugin, Signal(kBlock, level));
        EXPECT_LT(silence, 1.5 * music) << level;
    }
}
