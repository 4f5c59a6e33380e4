// The libraries of both systems play the same, whatever the settings: the Windows one through Wine.
#include "params/ids/ParameterIds.h"
#include "tests/support/Stream.h"
#include "tests/support/WindowsBuild.h"

#include <array>
#include <cmath>
#include <cstring>
#include <random>

namespace {

TEST(Systems, RandomSettingsSoundTheSameInEveryBit)
{
    const auto windows = openWindowsPlugin(), here = host::openPlugin(ZKR_PLUGIN);
    if (!windows)
        GTEST_SKIP() << "no Windows build";
    std::mt19937 random(46);
    const auto below = [&](unsigned count) { return static_cast<unsigned>(random() % count); };
    const auto both = [&](const auto& action) {
        action(*windows);
        action(*here);
    };
    const auto change = [&](unsigned id, float value) {
        both([&](auto& plugin) { plugin.setParameter(static_cast<VstInt32>(id), value); });
    };
    const auto changeAtRandom = [&](unsigned id) {
        change(id, static_cast<float>(below(1025)) / 1024.0f);
    };
    for (int setting = 0; setting < 100; ++setting) {
        const double rate = std::array{44100, 48000, 88200, 96000, 176400, 192000}[below(6)];
        const int channelsIn = 1 + static_cast<int>(below(2));
        const int channelsOut = channelsIn + (channelsIn == 1 && below(2) ? 1 : 0);
        both([&](auto& plugin) {
            plugin.mainsOff();
            ASSERT_TRUE(plugin.setSpeakerArrangement(channelsIn, channelsOut));
            plugin.setSampleRate(rate);
            plugin.setBlockSize(2000);
            plugin.mainsOn();
        });
        for (unsigned id = 0; id < kPresetParamCount; ++id)
            id <= kBpsCh2 ? change(id, id == kPower ? 1.0f : 0.0f) : changeAtRandom(id);
        const float loudness = std::exp2(2.0f - static_cast<float>(below(13)));  // up to +12 dBFS
        for (int block = 0; block < 20; ++block) {
            std::vector<Signal> in(static_cast<std::size_t>(channelsIn), Signal(1 + below(2000)));
            for (Signal& channel : in)
                for (float& x : channel)
                    x = loudness * (static_cast<float>(below(1 << 20)) / (1 << 19) - 1.0f);
            const auto length = static_cast<int>(in[0].size());
            const auto wanted = stream(*here, in, length), got = stream(*windows, in, length);
            for (std::size_t c = 0; c < wanted.size(); ++c)
                ASSERT_EQ(
                    std::memcmp(wanted[c].data(), got[c].data(), sizeof(float) * in[0].size()), 0)
                    << "channel " << c << " of block " << block << " of setting " << setting
                    << ", at " << rate << " Hz";
            for (int changes = 0; changes < 3; ++changes)
                changeAtRandom(below(kPresetParamCount));
        }
        ASSERT_EQ(windows->latency(), here->latency());
    }
}

}  // namespace
