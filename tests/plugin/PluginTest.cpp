// The built library, loaded and driven as a host does, through its entry point.
#include "params/ids/ParameterIds.h"
#include "tests/support/Noise.h"
#include "tests/support/Stream.h"
#include "tools/host/NativePlugin.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>

namespace {

using host::NativePlugin;

std::unique_ptr<NativePlugin> open(double rate = 44100.0, int in = 2, int out = 2)
{
    auto plugin = std::make_unique<NativePlugin>(ZKR_PLUGIN);
    EXPECT_TRUE(plugin->setSpeakerArrangement(in, out));
    plugin->setSampleRate(rate);
    plugin->setBlockSize(4096);
    plugin->mainsOn();
    return plugin;
}

}  // namespace

TEST(Library, ReportsItsPropertiesToAHost)
{
    NativePlugin plugin(ZKR_PLUGIN);
    const host::EffectFields fields = plugin.fields();
    EXPECT_EQ(fields.numParams, 58);
    EXPECT_EQ(fields.numPrograms, 1);
    EXPECT_EQ(fields.numInputs, 2);
    EXPECT_EQ(fields.numOutputs, 2);
    EXPECT_EQ(fields.initialDelay, 96);
    EXPECT_EQ(fields.uniqueID, 0x5A743436);  // "Zt46"
    EXPECT_EQ(fields.flags & (effFlagsCanReplacing | effFlagsProgramChunks | effFlagsNoSoundInStop),
              effFlagsCanReplacing | effFlagsProgramChunks | effFlagsNoSoundInStop);
    EXPECT_EQ(fields.flags & (effFlagsIsSynth | effFlagsCanDoubleReplacing), 0);
    EXPECT_EQ(plugin.effectName(), "ZKR T46");
    EXPECT_EQ(plugin.vendor(), "ZKR-soundworks");
    EXPECT_EQ(plugin.dispatch(effGetVendorVersion), 0x01000100);
    EXPECT_EQ(plugin.dispatch(effGetPlugCategory), kPlugCategMastering);
    EXPECT_EQ(plugin.dispatch(effGetVstVersion), 2400);
    EXPECT_EQ(plugin.tail(), 0);
    constexpr struct {
        VstInt32 index;
        const char *name, *label, *display;
    } kRows[] = {
        {0, "Power", "", "On"}, {3, "Channel", "", "Stereo"}, {57, "HGainR2", "dB", "0.00"}};
    for (const auto& row : kRows) {
        EXPECT_EQ(plugin.paramName(row.index), row.name);
        EXPECT_EQ(plugin.paramLabel(row.index), row.label);
        EXPECT_EQ(plugin.paramDisplay(row.index), row.display);
        EXPECT_TRUE(plugin.canBeAutomated(row.index));
    }
}

TEST(Library, TwoEffectsCoexistAndOneOutlivesTheOther)
{
    auto first = open(), second = open();
    first->setParameter(kPower, 0.0f);
    EXPECT_EQ(second->parameter(kPower), 1.0f);
    second->setParameter(kPower, 0.0f);
    const std::vector<Signal> in(2, noise(2000, 1));
    const std::vector<Signal> wanted = stream(*first, in);
    first.reset();
    EXPECT_EQ(stream(*second, in, 64), wanted);
    second.reset();
    EXPECT_NO_THROW(open()) << "after the last effect is closed another can be opened";
}

TEST(Library, AnImpulseIsDelayedByTheReportedLatencyInEveryLayoutRateAndBlockSize)
{
    constexpr struct {
        int in, out;
    } kLayouts[] = {{1, 1}, {1, 2}, {2, 2}};
    for (const auto& layout : kLayouts)
        for (const double rate : {44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0}) {
            SCOPED_TRACE(testing::Message() << layout.in << " to " << layout.out << " at " << rate);
            auto plugin = open(rate, layout.in, layout.out);
            plugin->setParameter(kPower, 0.0f);
            EXPECT_EQ(plugin->latency(), rate < 176400.0 ? 96 : 0);
            std::vector<Signal> in(static_cast<std::size_t>(layout.in), Signal(200)), wanted;
            for (Signal& channel : in)
                channel[0] = 1.0f;
            for (const int block : {1000, 1, 2, 7, 16, 17, 64}) {
                plugin->mainsOff();
                plugin->mainsOn();
                const std::vector<Signal> out = stream(*plugin, in, block);
                ASSERT_EQ(out.size(), static_cast<std::size_t>(layout.out));
                const auto smaller = [](float a, float b) { return std::abs(a) < std::abs(b); };
                for (const Signal& channel : out)
                    ASSERT_EQ(std::max_element(channel.begin(), channel.end(), smaller)
                                  - channel.begin(),
                              plugin->latency())
                        << "block " << block;
                if (wanted.empty())
                    wanted = out;
                ASSERT_EQ(out, wanted) << "block " << block;
            }
        }
}

TEST(Library, AHostIsToldOfANewLatencyOnce)
{
    auto plugin = open(96000.0);
    plugin->clearReports();
    plugin->mainsOff();
    plugin->setSampleRate(192000.0);
    plugin->mainsOn();
    EXPECT_EQ(plugin->latency(), 0);
    EXPECT_EQ(plugin->reports().ioChanges, 1);
    plugin->mainsOff();
    plugin->mainsOn();
    EXPECT_EQ(plugin->reports().ioChanges, 1);
    // A rate that changes while the effect runs.
    plugin->setSampleRate(44100.0);
    EXPECT_EQ(plugin->latency(), 96);
    EXPECT_EQ(plugin->reports().ioChanges, 2);
}
