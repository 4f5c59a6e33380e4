// The host against a small effect: what it tells the effect, what it hears, and what it refuses.
#include "HostError.h"
#include "NativePlugin.h"
#include "OpenPlugin.h"
#include "SoundEffect.h"

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

TEST(Host, DrivesASoundEffectAndHearsWhatItReports)
{
    NativePlugin plugin(TEST_EFFECT_GOOD);
    expectSoundEffect(plugin);
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
