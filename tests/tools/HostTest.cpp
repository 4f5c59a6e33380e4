// The host against a small effect: what it tells the effect, what it hears, and what it refuses.
#include "HostError.h"
#include "NativePlugin.h"
#include "OpenPlugin.h"

#include <gtest/gtest.h>

namespace {

using namespace host;

std::string refusal(const std::string& path, const HostSettings& settings = {})
{
    try {
        openPlugin(path, settings);
    } catch (const HostError& error) {
        return error.what();
    }
    return "opened";
}

// An empty phrase is in every text: none of them may be.
void expectMentions(const std::string& text, const std::string& phrase)
{
    EXPECT_NE(text.find(phrase), std::string::npos) << "'" << text << "' lacks '" << phrase << "'";
    EXPECT_EQ(text.find('\n'), std::string::npos) << text;
}

TEST(Host, TellsAnEffectWhoItIsAndFollowsRateAndBlockSize)
{
    NativePlugin plugin(TEST_EFFECT_GOOD);
    EXPECT_EQ(plugin.effectName(), "zkrt46 host 44100 512");
    plugin.setSampleRate(96000.0);
    plugin.setBlockSize(64);
    EXPECT_EQ(plugin.effectName(), "zkrt46 host 96000 64");
    EXPECT_EQ(plugin.canDo("anything"), 1) << "the effect hands on what the host says it can do";
}

TEST(Host, ReadsFieldsTextsStepsAndChunks)
{
    NativePlugin plugin(TEST_EFFECT_GOOD);
    EXPECT_EQ(plugin.fields().numParams, 3);
    EXPECT_EQ(plugin.fields().uniqueID, 0x54657374);
    EXPECT_EQ(plugin.latency(), 11);
    EXPECT_EQ(plugin.paramDisplay(0), "longer than eight characters");
    EXPECT_EQ(plugin.paramSteps(0), 1);
    EXPECT_EQ(plugin.paramSteps(1), 9);
    EXPECT_EQ(plugin.paramSteps(2), 0);
    EXPECT_TRUE(plugin.stringToParameter(0, "half"));
    EXPECT_FALSE(plugin.stringToParameter(0, "hal"));

    plugin.setParameter(0, 0.75f);
    const std::vector<std::uint8_t> saved = plugin.bankChunk();
    EXPECT_EQ(saved.size(), sizeof(float));
    EXPECT_TRUE(plugin.programChunk().empty());
    plugin.setParameter(0, 0.0f);
    plugin.setBankChunk(saved);
    EXPECT_EQ(plugin.parameter(0), 0.75f);
}

TEST(Host, HearsWhatTheEffectReports)
{
    NativePlugin plugin(TEST_EFFECT_GOOD);
    EXPECT_EQ(plugin.reports().beginEdits, 1) << "the effect reports while it is being opened";
    plugin.setParameter(2, 0.5f);
    EXPECT_FALSE(plugin.setSpeakerArrangement(2, 2));
    EXPECT_TRUE(plugin.setSpeakerArrangement(1, 2));
    const HostReports reports = plugin.reports();
    ASSERT_EQ(reports.automated.size(), 1u);
    EXPECT_EQ(reports.automated[0].index, 2);
    EXPECT_EQ(reports.automated[0].value, 0.5f);
    EXPECT_EQ(reports.ioChanges, 1);
    plugin.clearReports();
    EXPECT_TRUE(plugin.reports().automated.empty());
}

TEST(Host, ProcessesMonoToStereoAndHandsOnNullPointers)
{
    NativePlugin plugin(TEST_EFFECT_GOOD);
    ASSERT_TRUE(plugin.setSpeakerArrangement(1, 2));
    float in[3]{1.0f, -2.0f, 0.5f};
    float left[3]{}, right[3]{};
    float* inputs[1]{in};
    float* outputs[2]{left, right};
    plugin.process(inputs, outputs, 3);
    EXPECT_EQ(right[1], -1.0f);
    EXPECT_EQ(left[2], 0.25f);
    inputs[0] = nullptr;
    plugin.process(inputs, outputs, 3);
    EXPECT_EQ(left[0], -1.0f) << "the effect's answer to a missing channel";
}

TEST(Host, KeepsTwoEffectsOfOneLibraryApart)
{
    NativePlugin first(TEST_EFFECT_GOOD);
    NativePlugin second(TEST_EFFECT_GOOD);
    second.setSampleRate(48000.0);
    second.setParameter(1, 0.1f);
    EXPECT_EQ(first.effectName(), "zkrt46 host 44100 512");
    EXPECT_EQ(second.effectName(), "zkrt46 host 48000 512");
    EXPECT_TRUE(first.reports().automated.empty());
}

TEST(Host, FindsTheOldEntryWhereTheNewOneIsMissing)
{
    EXPECT_EQ(NativePlugin(TEST_EFFECT_OLD_ENTRY).latency(), 11);
}

TEST(Host, RefusesWhatIsNoPluginInOneLine)
{
    expectMentions(refusal(TEST_EFFECT_NO_ENTRY), "exports neither VSTPluginMain nor main");
    expectMentions(refusal(TEST_EFFECT_BAD_MAGIC), "no valid effect");
    expectMentions(refusal("no/such/plugin.so"), "no such plug-in");
    HostSettings ancient;
    ancient.vstVersion = 0;
    expectMentions(refusal(TEST_EFFECT_GOOD, ancient), "refused to start");
    // This very file is no library.
    expectMentions(refusal(TEST_SOURCE_FILE), "cannot load");
}

}  // namespace
