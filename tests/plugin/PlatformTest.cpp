// The Windows library, through Wine, gives the same bits as the one built for this system.
#include "NativePlugin.h"
#include "Noise.h"
#include "OpenPlugin.h"
#include "Stream.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>

namespace {

using Settings = std::map<VstInt32, float>;

const std::string kWindowsPlugin = ZKR_WINDOWS_BUILD "/shell/ZKRT46.dll";

// The largest one between here and there.
double difference(double rate, const Settings& settings)
{
    std::vector<Signal> heard[2];
    for (const bool there : {false, true}) {
        const auto plugin = host::openPlugin(there ? kWindowsPlugin : ZKR_PLUGIN);
        plugin->setSampleRate(rate);
        for (const auto& [index, value] : settings)
            plugin->setParameter(index, value);
        plugin->mainsOn();
        heard[there] = stream(*plugin, {noise(24000, 9), noise(24000, 10)}, 480);
        plugin->mainsOff();
    }
    double largest = 0.0;
    for (std::size_t c = 0; c < 2; ++c)
        for (std::size_t i = 0; i < heard[0][c].size(); ++i)
            largest = std::max(largest, std::abs(double{heard[0][c][i]} - double{heard[1][c][i]}));
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
    for (const double rate : {44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0})
        EXPECT_EQ(difference(rate, {{0, 0.0f}}), 0.0) << rate << " without power";
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
            const double furthest = difference(rate, settings);
            std::printf("largest difference at %.0f Hz with %zu settings: %.3g\n", rate,
                        settings.size(), furthest);
            EXPECT_LT(furthest, 1.2e-7) << rate;
        }
}
