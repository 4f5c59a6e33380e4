// The Windows library, through Wine, gives the same bits as the one built for this system.
#include "NativePlugin.h"
#include "OpenPlugin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace {

using Signal = std::vector<float>;
using Settings = std::map<VstInt32, float>;

const std::string kWindowsPlugin = ZKR_WINDOWS_BUILD "/shell/ZKRT46.dll";

std::vector<Signal> render(host::Plugin& plugin, double rate, const Settings& settings)
{
    plugin.setSampleRate(rate);
    plugin.setBlockSize(480);
    for (const auto& [index, value] : settings)
        plugin.setParameter(index, value);
    plugin.mainsOn();
    std::vector<Signal> in(2, Signal(24000)), out(2, Signal(24000));
    unsigned seed = 9;
    for (std::size_t i = 0; i < in[0].size(); ++i)
        for (Signal& channel : in) {
            seed = seed * 1664525u + 1013904223u;
            channel[i] = 0.7f * (static_cast<float>(seed >> 8) / 8388608.0f - 1.0f);
        }
    for (std::size_t done = 0; done < in[0].size(); done += 480) {
        float* inputs[2] = {in[0].data() + done, in[1].data() + done};
        float* outputs[2] = {out[0].data() + done, out[1].data() + done};
        plugin.process(inputs, outputs, 480);
    }
    plugin.mainsOff();
    return out;
}

double largestDifference(const std::vector<Signal>& a, const std::vector<Signal>& b)
{
    double largest = 0.0;
    for (std::size_t c = 0; c < a.size(); ++c)
        for (std::size_t i = 0; i < a[c].size(); ++i)
            largest = std::max(
                largest, std::abs(static_cast<double>(a[c][i]) - static_cast<double>(b[c][i])));
    return largest;
}

}  // namespace

class Platforms : public testing::Test {
protected:
    void SetUp() override
    {
        const std::string helper = ZKR_WINDOWS_BUILD "/tools/bridge/zkrt46-bridge.exe";
        if (!std::filesystem::exists(kWindowsPlugin) || !std::filesystem::exists(helper)) {
            ASSERT_EQ(std::getenv("ZKR_EXPECT_WINDOWS"), nullptr) << "no Windows build";
            GTEST_SKIP() << "no Windows build in " ZKR_WINDOWS_BUILD;
        }
        setenv("ZKRT46_BRIDGE", helper.c_str(), 1);
        setenv("WINEPREFIX", ZKR_WINDOWS_BUILD "/../wine", 0);
    }
};

TEST_F(Platforms, TheOversamplingPathsAgreeInEveryBit)
{
    for (const double rate : {44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0}) {
        host::NativePlugin here(ZKR_PLUGIN);
        const auto there = host::openPlugin(kWindowsPlugin);
        const Settings powerOff{{0, 0.0f}};
        EXPECT_EQ(largestDifference(render(here, rate, powerOff), render(*there, rate, powerOff)),
                  0.0)
            << rate;
    }
}

// The strips' designs come from sin, pow and log of two C libraries, which may differ in the last
// place. What is left of that in the 24-bit sound is checked here.
TEST_F(Platforms, TheWholeChainAgreesFarBelowTheSmallestStepOf24Bits)
{
    Settings busy;
    for (VstInt32 i = 0; i < 58; ++i)
        busy[i] = static_cast<float>(i * 37 % 19) / 18.0f;
    busy[0] = 1.0f;  // Power
    busy[1] = busy[2] = 0.0f;
    busy[3] = 0.5f;  // Stereo
    busy[5] = busy[6] = 1.0f;
    for (const Settings& settings : {Settings{}, busy})
        for (const double rate : {44100.0, 96000.0}) {
            host::NativePlugin here(ZKR_PLUGIN);
            const auto there = host::openPlugin(kWindowsPlugin);
            const double difference =
                largestDifference(render(here, rate, settings), render(*there, rate, settings));
            std::printf("largest difference at %.0f Hz with %zu settings: %.3g\n", rate,
                        settings.size(), difference);
            EXPECT_LT(difference, 1.2e-7) << rate;
        }
}
