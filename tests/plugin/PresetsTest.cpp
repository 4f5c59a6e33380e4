// Presets of the built library in a VST 2 host: program name, chunk and stored defaults.
#include "params/ids/ParameterIds.h"
#include "platform/SettingsStore.h"
#include "presets/FactoryBank.h"
#include "tests/support/Images.h"
#include "tests/support/Noise.h"
#include "tests/support/Stream.h"
#include "tools/host/NativePlugin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace {

using host::NativePlugin;
using Bytes = std::vector<std::uint8_t>;

// The output of the first block after a start, with noise as input.
std::vector<Signal> firstBlock(NativePlugin& plugin)
{
    plugin.setSampleRate(48000.0);
    plugin.mainsOn();
    const std::vector<Signal> out = stream(plugin, {noise(512, 1), noise(512, 2)});
    plugin.mainsOff();
    return out;
}

void setAll(NativePlugin& plugin, const PresetSlot& preset)
{
    for (VstInt32 id = 0; id < 58; ++id)
        plugin.setParameter(id, preset.values[id]);
}

Signal valuesOf(NativePlugin& plugin)
{
    Signal values;
    for (VstInt32 id = 0; id < 58; ++id)
        values.push_back(plugin.parameter(id));
    return values;
}

// Removes stored presets before and after each test.
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

TEST_F(StoredSettings, AProjectRestoresTheWholeBankAndTheOutputFromTheFirstBlock)
{
    NativePlugin saved(ZKR_PLUGIN);
    setAll(saved, factoryBank()[19]);
    saved.clearReports();
    saved.setProgramName(u8"Für Müller, leise genug");
    EXPECT_EQ(saved.reports().displayUpdates, 1);
    const std::string name = std::string(u8"Für Müller, leise genug").substr(0, 23);
    EXPECT_EQ(saved.programName(0), name);
    const Bytes chunk = saved.bankChunk();  // includes a value set just before
    ASSERT_EQ(chunk.size(), 48641u);
    const Bytes start{0, 0, 0, 0, 0, 0, 0, 0, 0xF1, 0xBD, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2};
    EXPECT_TRUE(std::equal(start.begin(), start.end(), chunk.begin()));
    EXPECT_EQ(std::memcmp(chunk.data() + 16 + 8 + 41 + 12, name.c_str(), name.size() + 1), 0);
    EXPECT_EQ(saved.programChunk(), chunk);
    const std::vector<Signal> wanted = firstBlock(saved);

    NativePlugin reopened(ZKR_PLUGIN), fresh(ZKR_PLUGIN);
    setAll(reopened, factoryBank()[18]);
    reopened.clearReports();
    reopened.setBankChunk(chunk);
    EXPECT_TRUE(reopened.reports().automated.empty());
    EXPECT_EQ(reopened.reports().displayUpdates, 1);
    EXPECT_EQ(reopened.programName(), name);
    EXPECT_EQ(valuesOf(reopened), valuesOf(saved));
    EXPECT_EQ(reopened.bankChunk(), chunk);
    EXPECT_EQ(firstBlock(reopened), wanted);
    EXPECT_EQ(valuesOf(reopened), valuesOf(saved));
    EXPECT_NE(firstBlock(fresh), wanted);
    reopened.setBankChunk(Bytes(chunk.begin(), chunk.end() - 1));
    EXPECT_EQ(reopened.bankChunk(), chunk);
}

TEST_F(StoredSettings, AStoredDefaultPresetIsShownAndAppliedFromTheFirstBlock)
{
    PresetSlot preset = factoryBank()[1];
    // As in some files: 24 bytes without a terminator, of which a host has room for 23.
    std::memcpy(preset.name, u8"Fat Kick on the floor ü", kPresetNameSize);
    NativePlugin plain(ZKR_PLUGIN);
    EXPECT_EQ(plain.parameter(kLGainL), 0.5f);
    setAll(plain, preset);
    platform::userSettings().write("DefaultPreset", imageOf(kPresetKind, {preset}));
    NativePlugin plugin(ZKR_PLUGIN);
    EXPECT_EQ(plugin.programName(), "Fat Kick on the floor ") << "no half character";
    EXPECT_EQ(plugin.parameter(kLGainL), 0.88f);
    EXPECT_EQ(firstBlock(plugin), firstBlock(plain));
}
