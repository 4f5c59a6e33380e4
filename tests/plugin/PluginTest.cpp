// The built library, loaded and driven as a host does it, through the entry a host uses.
#include "Noise.h"
#include "NativePlugin.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

using host::NativePlugin;

constexpr double kRates[] = {44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0};
constexpr VstInt32 kPower = 0;

using Signal = std::vector<float>;

std::unique_ptr<NativePlugin> open(double rate = 44100.0, int in = 2, int out = 2)
{
    auto plugin = std::make_unique<NativePlugin>(ZKR_PLUGIN);
    EXPECT_TRUE(plugin->setSpeakerArrangement(in, out));
    plugin->setSampleRate(rate);
    plugin->setBlockSize(4096);
    plugin->mainsOn();
    return plugin;
}

// Streams `in` through the plug-in in blocks of one length and returns the channels that come out.
std::vector<Signal> stream(host::Plugin& plugin, std::vector<Signal> in, int block)
{
    const auto channelsOut = static_cast<std::size_t>(plugin.fields().numOutputs);
    std::vector<Signal> out(channelsOut, Signal(in[0].size(), 0.0f));
    for (std::size_t done = 0; done < in[0].size();) {
        const int length = std::min(block, static_cast<int>(in[0].size() - done));
        float *inputs[2] = {}, *outputs[2] = {};
        for (std::size_t c = 0; c < in.size(); ++c)
            inputs[c] = in[c].data() + done;
        for (std::size_t c = 0; c < channelsOut; ++c)
            outputs[c] = out[c].data() + done;
        plugin.process(inputs, outputs, length);
        done += static_cast<std::size_t>(length);
    }
    return out;
}

Signal impulse(std::size_t length)
{
    Signal signal(length, 0.0f);
    signal[0] = 1.0f;
    return signal;
}

int indexOfPeak(const Signal& signal)
{
    std::size_t peak = 0;
    for (std::size_t i = 0; i < signal.size(); ++i)
        if (std::abs(signal[i]) > std::abs(signal[peak]))
            peak = i;
    return static_cast<int>(peak);
}

}  // namespace

TEST(Library, TellsAHostWhatItIs)
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
    EXPECT_EQ(plugin.paramName(57), "HGainR2");
    EXPECT_EQ(plugin.paramDisplay(3), "Stereo");
}

TEST(Library, RefusesAHostThatKnowsNoVersion)
{
    host::HostSettings settings;
    settings.vstVersion = 0;
    EXPECT_ANY_THROW(NativePlugin(ZKR_PLUGIN, settings));
    EXPECT_NO_THROW(NativePlugin(ZKR_PLUGIN));
}

TEST(Library, TwoEffectsLiveSideBySideAndOneOutlivesTheOther)
{
    auto first = open(), second = open();
    first->setParameter(kPower, 0.0f);
    EXPECT_EQ(second->parameter(kPower), 1.0f);
    second->setParameter(kPower, 0.0f);
    const Signal in = noise(2000, 1);
    const std::vector<Signal> wanted = stream(*first, {in, in}, 512);
    first.reset();
    EXPECT_EQ(stream(*second, {in, in}, 64), wanted);
    second.reset();
    EXPECT_NO_THROW(open()) << "after the last effect is gone the library makes another";
}

TEST(Library, AnImpulseComesOutExactlyWhereTheHostIsToldInEveryLayoutRateAndBlockSize)
{
    std::vector<int> blocks{1000, 4096};
    for (int block = 1; block <= 64; ++block)
        blocks.push_back(block);
    struct Layout {
        int in, out;
    };
    for (const Layout layout : {Layout{1, 1}, Layout{1, 2}, Layout{2, 2}})
        for (const double rate : kRates) {
            SCOPED_TRACE(testing::Message() << layout.in << " to " << layout.out << " at " << rate);
            auto plugin = open(rate, layout.in, layout.out);
            plugin->setParameter(kPower, 0.0f);
            EXPECT_EQ(plugin->latency(), rate < 176400.0 ? 96 : 0);
            const std::vector<Signal> in(static_cast<std::size_t>(layout.in), impulse(200));
            std::vector<Signal> wanted;
            for (const int block : blocks) {
                plugin->mainsOff();
                plugin->mainsOn();
                float* none[2] = {};
                plugin->process(none, none, 0);
                const std::vector<Signal> out = stream(*plugin, in, block);
                ASSERT_EQ(out.size(), static_cast<std::size_t>(layout.out));
                for (const Signal& channel : out)
                    ASSERT_EQ(indexOfPeak(channel), plugin->latency()) << "block " << block;
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

TEST(Library, TheProcessorStartsWithWhatTheControllerShows)
{
    // Left as they are and set to what they show, all parameters must sound the same.
    const Signal in = noise(3000, 2);
    auto untouched = open(), touched = open();
    for (VstInt32 i = 0; i < touched->fields().numParams; ++i)
        touched->setParameter(i, touched->parameter(i));
    EXPECT_EQ(stream(*untouched, {in, in}, 256), stream(*touched, {in, in}, 256));
}

// Parameters arrive with the block that follows, in the running system as in a stopped one, and a
// thread that writes them while another processes disturbs nothing.
TEST(Library, EveryParametersLastValueArrivesFromAnotherThread)
{
    auto plugin = open();
    std::atomic<bool> done{false};
    std::thread writer([&] {
        for (int turn = 0; turn < 400; ++turn)
            for (VstInt32 i = 0; i < 58; ++i)
                plugin->setParameter(i, static_cast<float>((turn * 7 + i * 3) % 11) / 10.0f);
        // The settings of the second effect below.
        for (VstInt32 i = 0; i < 58; ++i)
            plugin->setParameter(i, i == kPower ? 1.0f : 0.5f);
        done = true;
    });
    const Signal in = noise(64, 3), silence(64, 0.0f);
    while (!done)
        stream(*plugin, {in, in}, 64);
    writer.join();

    auto quiet = open();
    for (VstInt32 i = 0; i < 58; ++i)
        quiet->setParameter(i, i == kPower ? 1.0f : 0.5f);
    for (host::Plugin* each :
         {static_cast<host::Plugin*>(plugin.get()), static_cast<host::Plugin*>(quiet.get())})
        for (int block = 0; block < 40; ++block)
            stream(*each, {silence, silence}, 64);
    // The filters' memory fades slowly, so mains off and on cuts what it can and a second of
    // silence does the rest; then both must sound alike.
    const Signal rest(44100, 0.0f), tone = noise(4000, 4);
    stream(*plugin, {rest, rest}, 512);
    stream(*quiet, {rest, rest}, 512);
    const std::vector<Signal> a = stream(*plugin, {tone, tone}, 512);
    const std::vector<Signal> b = stream(*quiet, {tone, tone}, 512);
    for (std::size_t i = 0; i < tone.size(); ++i)
        ASSERT_NEAR(a[0][i], b[0][i], 1e-4f) << i;
}
