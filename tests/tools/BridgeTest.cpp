// The bridge from Linux to a Windows plug-in. With Wine and the Windows build available, the
// plug-in must behave the same on both sides; failures are tested with scripts in place of Wine.
#include "tests/support/Noise.h"
#include "tests/support/Stream.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WindowsBuild.h"
#include "tests/tools/Complaint.h"
#include "tools/banks/HostFile.h"
#include "tools/banks/PresetFile.h"
#include "tools/host/BridgedPlugin.h"

#include <gtest/gtest.h>
#include <sstream>

#include <sys/stat.h>

namespace {

using namespace host;

class FakeWine : public ::testing::Test {
protected:
    FakeWine() : oldPath(getenv("PATH"))
    {
        writeContent(folder / "plugin.dll", "a library");
        writeContent(folder / "zkrt46-bridge.exe", "a helper");
        unsetenv("ZKRT46_BRIDGE");
        setenv("XDG_CACHE_HOME", (folder / "cache").c_str(), 1);
    }
    ~FakeWine() override { setenv("PATH", oldPath.c_str(), 1); }
    void wineIs(const std::string& script)
    {
        writeContent(folder / "wine", "#!/bin/sh\n" + script + "\n");
        chmod((folder / "wine").c_str(), 0755);
        setenv("PATH", ((folder / "") + ":" + oldPath).c_str(), 1);
    }
    void expectRefusal(const std::string& words)
    {
        const std::string said =
            complaintOf([this] { BridgedPlugin plugin(folder / "plugin.dll"); });
        EXPECT_NE(said.find(words), std::string::npos) << said << "\n  instead of " << words;
    }
    TemporaryFolder folder;
    std::string oldPath;
};

TEST_F(FakeWine, SaysWhatIsMissing)
{
    setenv("PATH", (folder / "").c_str(), 1);
    expectRefusal("needs Wine: cannot start 'wine': it is not installed");
    for (const char* missing : {"zkrt46-bridge.exe", "plugin.dll"}) {
        std::filesystem::remove(folder / missing);
        expectRefusal(missing);
    }
    expectRefusal("no such plug-in");
}

TEST_F(FakeWine, DetectsAHelperThatExitsOrSendsDamagedMessages)
{
    const std::pair<const char*, const char*> rows[]{
        {"echo 'wine: some note' >&2; echo 'wine: the reason' >&2; exit 1",
         "ended unexpectedly: wine: the reason"},
        // Sends the greeting, then exits in the middle of an answer.
        {"printf 'ZRB1'; printf '\\100\\000\\000\\000half'", "ended unexpectedly"},
        {"echo 'some chatter on the line'; cat >/dev/null", "is not the helper of this program"},
        // A message longer than permitted; and one that is too short for its content.
        {"printf 'ZRB1\\377\\377\\377\\377'; cat >/dev/null", "damaged message"},
        {"printf 'ZRB1\\002\\000\\000\\000\\000\\000'; cat >/dev/null", "damaged message"},
        // The helper's error message is passed on unchanged.
        {"printf 'ZRB1\\007\\000\\000\\000\\001\\002\\000\\000\\000qz'; cat >/dev/null", "qz"},
    };
    for (const auto& [script, words] : rows) {
        wineIs(script);
        expectRefusal(words);
    }
    // Wine's variables get defaults only where the user has not set them.
    unsetenv("WINEPREFIX");
    unsetenv("WINEDLLOVERRIDES");
    setenv("WINEDEBUG", "+relay", 1);
    setenv("LC_ALL", "C", 1);
    wineIs("echo \"$WINEDEBUG $WINEDLLOVERRIDES $LC_ALL $WINEPREFIX\" >&2; exit 1");
    expectRefusal("+relay mscoree,mshtml= C.UTF-8 " + (folder / "cache/zkrt46/wine"));
    unsetenv("LC_ALL");
    unsetenv("WINEDEBUG");
}

TEST(BridgeProtocol, SettingsAndReportsArriveAsSent)
{
    MessageWriter writer;
    putSettings(writer, {1, 2, 3.5, 4});
    putReports(writer, {{{5, 6.5f}}, 7, 8, 9, 10, 11, 12, 13});
    const std::vector<std::uint8_t>& framed = writer.framed();
    MessageReader reader({framed.begin() + 4, framed.end()});
    const auto [version, level, rate, block] = getSettings(reader);
    EXPECT_EQ(std::tie(version, level, rate, block), std::make_tuple(1, 2, 3.5, 4));
    const HostReports r = getReports(reader);
    ASSERT_EQ(r.automated.size(), 1u);
    EXPECT_EQ(std::tie(r.automated[0].index, r.automated[0].value), std::make_tuple(5, 6.5f));
    EXPECT_EQ(std::tie(r.beginEdits, r.endEdits, r.ioChanges, r.displayUpdates, r.windowSizes,
                       r.windowWidth, r.windowHeight),
              std::make_tuple(7, 8, 9, 10, 11, 12, 13));
}

// Everything that a host can query, before and after a few changes, as text.
std::string storyOf(Plugin& plugin)
{
    std::ostringstream story;
    story << plugin.effectName() << plugin.canDo("bypass") << plugin.stringToParameter(28, "3.5")
          << plugin.stringToParameter(28, "hal") << plugin.setSpeakerArrangement(6, 2)
          << plugin.setSpeakerArrangement(1, 2);
    plugin.setParameter(0, 0.0f);
    const std::vector<std::uint8_t> saved = plugin.bankChunk();
    plugin.setParameter(0, 1.0f);
    plugin.setBankChunk(saved);
    // The chunk of a .fxp with one preset, behind the header of 60 bytes.
    const PresetSlot& preset = factoryBank()[19];
    const std::vector<std::uint8_t> file = tool::fxpBytes(tool::presetBytes(preset), preset, 1);
    plugin.setProgramChunk({file.begin() + 60, file.end()});
    story << plugin.programName();
    for (const std::uint8_t byte : plugin.bankChunk())
        story << int{byte} << ' ';
    plugin.setSampleRate(192000.0);
    plugin.setBlockSize(5000);
    plugin.mainsOn();
    const EffectFields fields = plugin.fields();
    story << fields.numParams << ' ' << fields.uniqueID << ' ' << fields.initialDelay << ' '
          << fields.numInputs << ' ' << plugin.reports().ioChanges;
    for (VstInt32 i = 0; i < fields.numParams; ++i)
        story << '\n'
              << plugin.paramName(i) << plugin.paramDisplay(i) << plugin.paramLabel(i) << ' '
              << plugin.paramSteps(i) << ' ' << plugin.parameter(i);
    for (const Signal& channel : stream(plugin, {noise(5000, 1)}, 5000))
        for (const float x : channel)
            story << ' ' << x;
    plugin.clearReports();
    story << plugin.reports().ioChanges;
    return story.str();
}

TEST(RealWine, APluginBehavesAsTheNativeOne)
{
    const auto windows = openWindowsPlugin();
    if (!windows)
        GTEST_SKIP() << "no Windows build";
    const std::string story = storyOf(*windows);
    EXPECT_EQ(story, storyOf(*openPlugin(ZKRT46_LIBRARY)));
    EXPECT_NE(story.find("R101"), std::string::npos) << "the preset was not loaded";
    TemporaryFolder folder;
    writeContent(folder / "text.dll", "no library");
    EXPECT_EQ(complaintOf([&] { BridgedPlugin refused(folder / "text.dll"); }),
              "cannot load '" + (folder / "text.dll") + "': it is not a 64-bit Windows library");
}

}  // namespace
