// The host with a small effect: opening, callbacks, and libraries that it refuses.
#include "tests/tools/Complaint.h"
#include "tools/host/NativePlugin.h"
#include "tools/host/OpenPlugin.h"

#include <gtest/gtest.h>

namespace {

using namespace host;

TEST(Host, AnswersAnEffectsQueriesAndRecordsItsReports)
{
    NativePlugin old(TEST_EFFECT_OLD_ENTRY), plugin(TEST_EFFECT_GOOD), other(TEST_EFFECT_GOOD);
    plugin.setSampleRate(96000.0);
    plugin.setBlockSize(64);
    plugin.setParameter(2, 0.75f);
    EXPECT_EQ(plugin.effectName(), "zkrt46 host 96000 64");
    ASSERT_EQ(plugin.reports().automated.size(), 1u);
    EXPECT_EQ(plugin.reports().automated[0].index, 2);
    EXPECT_EQ(plugin.reports().automated[0].value, 0.75f);
    EXPECT_EQ(plugin.reports().beginEdits, 1) << "reports during opening were lost";
    EXPECT_EQ(plugin.reports().endEdits, 1);
    EXPECT_EQ(plugin.reports().windowWidth, 394);
    EXPECT_EQ(plugin.reports().windowHeight, 560);
    plugin.clearReports();
    EXPECT_TRUE(plugin.reports().automated.empty());
    for (NativePlugin* const untouched : {&old, &other}) {
        EXPECT_EQ(untouched->effectName(), "zkrt46 host 44100 512");
        EXPECT_TRUE(untouched->reports().automated.empty());
    }
}

TEST(Host, RefusesInvalidPluginsWithAMessageOfOneLine)
{
    HostSettings ancient;
    ancient.vstVersion = 0;
    const struct {
        const char* path;
        HostSettings settings;
        const char* words;
    } rows[]{
        {TEST_EFFECT_NO_ENTRY, {}, "exports neither VSTPluginMain nor main"},
        {TEST_EFFECT_VST3, {}, "is a VST 3 plug-in"},
        {TEST_EFFECT_BAD_MAGIC, {}, "no valid effect"},
        {"no/such/plugin.so", {}, "no such plug-in"},
        {TEST_EFFECT_GOOD, ancient, "refused to start"},
        {TEST_SOURCE_FILE, {}, "cannot load"},  // a text file
    };
    for (const auto& row : rows) {
        const std::string said = complaintOf([&] { openPlugin(row.path, row.settings); });
        EXPECT_NE(said.find(row.words), std::string::npos) << said;
        EXPECT_EQ(said.find('\n'), std::string::npos) << said;
    }
}

}  // namespace
