// Long random automation of every parameter at every rate: the sound stays finite and bounded, and
// silence costs no more than music.
//
// ZKR_AUTOMATION_SECONDS sets how much audio each rate gets (10 s unless told otherwise).
#include "NativePlugin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <vector>

namespace {

constexpr int kBlock = 512;

// A plug-in with its block buffers.
class Stream {
public:
    explicit Stream(double rate) : plugin(ZKR_PLUGIN)
    {
        plugin.setSampleRate(rate);
        plugin.setBlockSize(kBlock);
        plugin.mainsOn();
    }

    // Runs one block of what `next` gives, and returns the largest magnitude that comes out; not a
    // number where any sample is none.
    template <typename Next>
    float run(int frames, Next next)
    {
        for (int i = 0; i < frames; ++i)
            for (auto& channel : in)
                channel[static_cast<std::size_t>(i)] = next();
        float* inputs[2] = {in[0].data(), in[1].data()};
        float* outputs[2] = {out[0].data(), out[1].data()};
        plugin.process(inputs, outputs, frames);
        float largest = 0.0f;
        for (const auto& channel : out)
            for (int i = 0; i < frames; ++i) {
                const float x = channel[static_cast<std::size_t>(i)];
                if (!std::isfinite(x))
                    return std::numeric_limits<float>::quiet_NaN();
                largest = std::max(largest, std::abs(x));
            }
        return largest;
    }

    host::NativePlugin plugin;
    std::vector<float> in[2] = {std::vector<float>(kBlock), std::vector<float>(kBlock)};
    std::vector<float> out[2] = {std::vector<float>(kBlock), std::vector<float>(kBlock)};
};

double secondsOfAudio()
{
    const char* wanted = std::getenv("ZKR_AUTOMATION_SECONDS");
    return wanted ? std::atof(wanted) : 10.0;
}

// The fastest of many blocks, in seconds: what the work costs when nothing else disturbs it.
template <typename Next>
double fastestBlock(Stream& stream, int blocks, Next next)
{
    double fastest = 1e9;
    for (int block = 0; block < blocks; ++block) {
        const auto start = std::chrono::steady_clock::now();
        stream.run(kBlock, next);
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        fastest = std::min(fastest, taken.count());
    }
    return fastest;
}

}  // namespace

class Automation : public testing::TestWithParam<double> { };

// With the amplifiers switched off, six bands of up to 17 dB, 16 dB of output gain and the 6 dB of
// "Middle" can stand on top of each other: 124 dB. What grows without bound passes that soon.
constexpr float kBound = 1.6e6f;

TEST_P(Automation, OfEverythingNeverLeavesASampleThatIsNotFiniteOrGrowsWithoutBound)
{
    Stream stream(GetParam());
    std::mt19937 random(static_cast<unsigned>(GetParam()));
    std::uniform_real_distribution<float> position(0.0f, 1.0f);
    const auto music = [&] { return 2.0f * position(random) - 1.0f; };

    const double seconds = secondsOfAudio();
    float loudest = 0.0f;
    for (double done = 0.0; done < seconds;) {
        // A few parameters in most blocks, all of them now and then; ends and steps included.
        const bool all = random() % 50 == 0;
        for (VstInt32 i = 0; i < 58; ++i) {
            if (!all && random() % 20 != 0)
                continue;
            const float value = position(random);
            stream.plugin.setParameter(i, random() % 4 ? value : std::round(value * 9.0f) / 9.0f);
        }
        const int frames = random() % 4 ? kBlock : static_cast<int>(random() % (kBlock + 1));
        const bool poisoned = random() % 100 == 0;
        const float loud = stream.run(frames, [&] {
            if (poisoned && random() % 30 == 0)
                return random() % 2 ? std::numeric_limits<float>::infinity()
                                    : std::numeric_limits<float>::quiet_NaN();
            return music();
        });
        ASSERT_TRUE(std::isfinite(loud)) << "after " << done << " s";
        ASSERT_LT(loud, kBound) << "after " << done << " s";
        loudest = std::max(loudest, loud);
        done += frames / GetParam();
    }
    std::printf("%.0f Hz: %.0f s, loudest sample %.1f\n", GetParam(), seconds,
                static_cast<double>(loudest));

    // The filters' memory runs out: the slowest, at 5 Hz, falls by 1 / e in 32 ms.
    for (double done = 0.0; done < 3.0; done += kBlock / GetParam())
        loudest = stream.run(kBlock, [] { return 0.0f; });
    EXPECT_LT(loudest, 1e-6f);
}

INSTANTIATE_TEST_SUITE_P(Rates, Automation,
                         testing::Values(44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0));

// Everything is switched on, so that every filter runs. A machine with other work disturbs single
// blocks, so the fastest of many is compared; denormal numbers would cost many times as much.
TEST(Silence, CostsNoMoreThanMusicOnceTheFiltersHaveRunOut)
{
    Stream stream(48000.0);
    for (VstInt32 i = 5; i < 58; ++i)
        stream.plugin.setParameter(i, 0.67f);
    for (const VstInt32 disable : {18, 19, 20, 21})
        stream.plugin.setParameter(disable, 0.0f);
    std::mt19937 random(1);
    std::uniform_real_distribution<float> position(-1.0f, 1.0f);
    const double music = fastestBlock(stream, 400, [&] { return position(random); });
    for (const float level : {0.0f, 1e-40f}) {
        fastestBlock(stream, 500, [&] { return level; });
        const double silence = fastestBlock(stream, 400, [&] { return level; });
        std::printf("a block of %g costs %.2f of one of music\n", static_cast<double>(level),
                    silence / music);
        EXPECT_LT(silence, 1.5 * music) << level;
    }
}
