// Presets of the built library, seen by a VST 2 host: the program's name, the project's chunk and
// what the user has stored.
#include "BankFormat.h"
#include "FactoryBank.h"
#include "NativePlugin.h"
#include "SettingsStore.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

namespace {

using host::NativePlugin;
using Bytes = std::vector<std::uint8_t>;
using Signal = std::vector<float>;

// The first block after a start, with something to hear in it.
Signal firstBlock(NativePlugin& plugin)
{
    plugin.setSampleRate(48000.0);
    plugin.mainsOn();
    Signal left(512), right(512);
    for (std::size_t i = 0; i < left.size(); ++i)
        left[i] = right[i] = static_cast<float>(i % 37) / 37.0f - 0.5f;
    float* channels[] = {left.data(), right.data()};
    plugin.process(channels, channels, static_cast<int>(left.size()));
    plugin.mainsOff();
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

void setAll(NativePlugin& plugin, const PresetSlot& preset)
{
    for (VstInt32 id = 0; id < 58; ++id)
        plugin.setParameter(id, preset.values[id]);
}

// The same settings for whoever runs these tests, whatever an earlier run left behind.
struct StoredSettings : testing::Test {
    StoredSettings() { clear(); }
    ~StoredSettings() override { clear(); }
    static void clear()
    {
        for (const char* name : {"DefaultBank", "DefaultPreset"})
            platform::userSettings().remove(name);
    }
};

}  // namespace

TEST_F(StoredSettings, TheProgramBearsThePresetsNameAndRenamesIt)
{
    NativePlugin plugin(ZKR_PLUGIN);
    EXPECT_EQ(plugin.programName(), "Default");
    EXPECT_EQ(plugin.programName(0), "Default");
    plugin.clearReports();
    plugin.setProgramName(u8"Für Müller, leise genug");
    EXPECT_EQ(plugin.reports().displayUpdates, 1);
    const std::string name = plugin.programName();
    EXPECT_EQ(name, std::string(u8"Für Müller, leise genug").substr(0, 23));
    const Bytes chunk = plugin.bankChunk();
    EXPECT_EQ(std::memcmp(chunk.data() + 16 + 8 + 41 + 12, name.c_str(), name.size() + 1), 0);
}

TEST_F(StoredSettings, AProjectKeepsTheWholeBankAndSoundsAsItDidFromTheFirstBlock)
{
    NativePlugin saved(ZKR_PLUGIN);
    setAll(saved, factoryBank()[19]);
    saved.setProgramName("In the project");
    const Bytes chunk = saved.bankChunk();  // a value set just before belongs to it
    ASSERT_EQ(chunk.size(), 48641u);
    const Bytes start{0, 0, 0, 0, 0, 0, 0, 0, 0xF1, 0xBD, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2};
    EXPECT_TRUE(std::equal(start.begin(), start.end(), chunk.begin()));
    EXPECT_EQ(saved.programChunk(), chunk);
    const Signal wanted = firstBlock(saved);

    NativePlugin reopened(ZKR_PLUGIN);
    setAll(reopened, factoryBank()[18]);
    reopened.clearReports();
    reopened.setBankChunk(chunk);
    EXPECT_TRUE(reopened.reports().automated.empty());
    EXPECT_EQ(reopened.reports().displayUpdates, 1);
    EXPECT_EQ(reopened.programName(), "In the project");
    EXPECT_EQ(reopened.bankChunk(), chunk);
    EXPECT_EQ(firstBlock(reopened), wanted);
    EXPECT_NE(firstBlock(*std::make_unique<NativePlugin>(ZKR_PLUGIN)), wanted);

    Bytes cut(chunk.begin(), chunk.end() - 1);
    reopened.setBankChunk(cut);
    EXPECT_EQ(reopened.bankChunk(), chunk);
}

TEST_F(StoredSettings, ARestoredProjectShowsItsValuesAtEveryPointWhereAHostMayRead)
{
    NativePlugin plugin(ZKR_PLUGIN);
    const auto read = [&] {
        Signal values;
        for (VstInt32 id = 0; id < 58; ++id)
            values.push_back(plugin.parameter(id));
        return values;
    };
    for (unsigned seed = 0; seed < 50; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::uniform_real_distribution<float> value(0.0f, 1.0f);
        const auto setSome = [&] {
            for (VstInt32 id = 0; id < 58; ++id)
                plugin.setParameter(id, value(random));
            if (seed % 2)
                firstBlock(plugin);
        };
        setSome();
        const Bytes chunk = plugin.bankChunk();
        const Signal saved = read();
        setSome();
        ASSERT_NE(read(), saved);
        plugin.setBankChunk(chunk);
        ASSERT_EQ(read(), saved);
        firstBlock(plugin);
        ASSERT_EQ(read(), saved);
        ASSERT_EQ(plugin.bankChunk(), chunk);
        ASSERT_EQ(read(), saved);
    }
}

TEST_F(StoredSettings, AUsersDefaultPresetIsShownAndHeardFromTheFirstBlock)
{
    const PresetSlot& preset = factoryBank()[1];
    ImageWriter writer(kPresetKind, 0, 1 + 58, kPresetImageSize - kFileHeaderSize);
    writer.appendName(0, preset);
    for (unsigned id = 0; id < 58; ++id)
        writer.appendValue(0, id, preset.values[id]);
    NativePlugin plain(ZKR_PLUGIN);
    const float untouched = plain.parameter(kLGainL);
    setAll(plain, preset);
    const Signal wanted = firstBlock(plain);

    platform::userSettings().write("DefaultPreset", writer.take());
    NativePlugin plugin(ZKR_PLUGIN);
    EXPECT_EQ(plugin.programName(), "Fat Kick");
    EXPECT_EQ(plugin.parameter(kLGainL), 0.88f);
    EXPECT_EQ(untouched, 0.5f);
    EXPECT_EQ(firstBlock(plugin), wanted);
}
