// The host against a small effect: what it tells the effect, what it hears, and what it refuses.
#include "Complaint.h"
#include "NativePlugin.h"
#include "OpenPlugin.h"
#include "SoundEffect.h"

#include <gtest/gtest.h>

namespace {

using namespace host;

TEST(Host, DrivesASoundEffectAndHearsWhatItReports)
{
    NativePlugin second(TEST_EFFECT_OLD_ENTRY), plugin(TEST_EFFECT_GOOD), third(TEST_EFFECT_GOOD);
    expectSoundEffect(plugin);
    for (NativePlugin* const other : {&second, &third}) {
        EXPECT_EQ(other->effectName(), "zkrt46 host 44100 512");
        EXPECT_TRUE(other->reports().automated.empty());
    }
}

TEST(Host, RefusesWhatIsNoPluginInOneLine)
{
    HostSettings ancient;
    ancient.vstVersion = 0;
    const struct {
        const char* path;
        HostSettings settings;
        const char* words;
    } rows[]{
        {TEST_EFFECT_NO_ENTRY, {}, "exports neither VSTPluginMain nor main"},
        {TEST_EFFECT_BAD_MAGIC, {}, "no valid effect"},
        {"no/such/plugin.so", {}, "no such plug-in"},
        {TEST_EFFECT_GOOD, ancient, "refused to start"},
        {TEST_SOURCE_FILE, {}, "cannot load"},  // this very file is no library
    };
    for (const auto& row : rows) {
        const std::string said = complaintOf([&] { openPlugin(row.path, row.settings); });
        EXPECT_NE(said.find(row.words), std::string::npos) << said;
        EXPECT_EQ(said.find('\n'), std::string::npos) << said;
    }
}

}  // namespace
