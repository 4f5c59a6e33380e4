// The built library, loaded and driven as a host does, through its entry point.
#include "params/ids/ParameterIds.h"
#include "tests/support/Noise.h"
#include "tests/support/Stream.h"
#include "tools/host/NativePlugin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
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

// Time of the fastest of many blocks, in seconds, which other processes disturb least.
double fastestBlock(NativePlugin& plugin, const Signal& sound)
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
    EXPECT_EQ(plugin.product(), "ZKR T46");
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

TEST(Library, ListsTheArrangementOfEachSide)
{
    const auto plugin = open(44100.0, 1, 2);
    AEffect* const effect = plugin->effect();
    VstSpeakerArrangement *in = nullptr, *out = nullptr;
    EXPECT_EQ(effect->dispatcher(effect, effGetSpeakerArrangement, 0,
                                 reinterpret_cast<VstIntPtr>(&in), &out, 0.0f),
              1);
    EXPECT_EQ(in->type, kSpeakerArrMono);
    EXPECT_EQ(out->type, kSpeakerArrStereo);
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

// Everything is switched on, so that every filter runs. Denormal numbers would take many times as
// long.
TEST(Library, SilenceTakesNoLongerThanMusicOnceTheFiltersHaveDecayed)
{
    auto plugin = open(48000.0);
    for (VstInt32 id = 5; id < 58; ++id)
        plugin->setParameter(id, 0.67f);
    for (const VstInt32 disable : {kTrfoDsL, kTrfoDsR, kAmpDsbL, kAmpDsbR})
        plugin->setParameter(disable, 0.0f);
    constexpr std::size_t kBlock = 512;
    const double music = fastestBlock(*plugin, noise(kBlock, 1));
    for (const float level : {0.0f, 1e-40f}) {
        fastestBlock(*plugin, Signal(kBlock, level));
        const double silence = fastestBlock(*plugin, Signal(kBlock, level));
        EXPECT_LT(silence, 1.5 * music) << level;
    }
}
