// Presets and banks through the built program: files to files, tables, and into the sound.
#include "BankFormat.h"
#include "CommandLine.h"

#include <algorithm>
#include <filesystem>

namespace {

class PresetCommand : public CommandLine { };

TEST_F(PresetCommand, ABankGoesThroughJsonUnchanged)
{
    ASSERT_EQ(run("bank export -o a.zkb"), 0) << err;
    ASSERT_EQ(run("bank export a.zkb -o a.json"), 0) << err;
    ASSERT_EQ(run("bank import a.json -o b.zkb"), 0) << err;
    EXPECT_EQ(contentOf(folder / "a.zkb").size(), kBankImageSize);
    EXPECT_TRUE(contentOf(folder / "a.zkb") == contentOf(folder / "b.zkb"));
    EXPECT_EQ(run("bank diff a.zkb b.zkb"), 0);
    EXPECT_EQ(run("bank diff a.json"), 0) << "the factory bank is the other one";
    EXPECT_EQ(run("check a.zkb a.json b.zkb"), 0);
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 3) << out;
}

TEST_F(PresetCommand, APresetMovesIntoABankByWayOfAFile)
{
    writeContent(folder / "mine.json",
                 R"({"format": "zkrt46-preset", "version": 1, "name": "M\u00e4rz",
                     "parameters": {"LGainL": "3.5 dB", "LFreqL": "82"}})");
    ASSERT_EQ(run("preset import mine.json --at 5 -o a.zkb"), 0) << err;
    ASSERT_EQ(run("preset export März --bank a.zkb -o mine.zkr"), 0) << err;
    EXPECT_EQ(contentOf(folder / "mine.zkr").size(), kPresetImageSize);
    ASSERT_EQ(run("preset import mine.zkr --into a.zkb --at Init"), 0) << err;
    ASSERT_EQ(run("preset show 21 --bank a.zkb"), 0) << err;
    EXPECT_EQ(out,
              "Preset 21 \"März\" of 'a.zkb'\n"
              "Title   Display   Stored\n"
              "LFreqL  82.00 Hz  0.7777778\n"
              "LGainL  3.50 dB   0.609375\n");
    ASSERT_EQ(run("preset show --preset-file mine.zkr --all"), 0);
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 2 + 58);
    ASSERT_EQ(run("preset list --bank a.zkb"), 0);
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 1 + 24);
    EXPECT_NE(out.find("\n5      März"), std::string::npos) << out;
    ASSERT_EQ(run("bank show a.zkb"), 0);
    EXPECT_NE(out.find("\n21 \"März\"\n  Title   Display   Stored\n  LFreqL  82.00 Hz"),
              std::string::npos);

    ASSERT_EQ(run("bank export -o b.zkb"), 0);
    ASSERT_EQ(run("preset import mine.json --into b.zkb --at 21"), 0);
    EXPECT_EQ(run("bank diff b.zkb"), 1);
    EXPECT_EQ(out,
              "Preset     Parameter  First     Second\n"
              "21 \"März\"  (name)     März      Init\n"
              "21 \"März\"  LFreqL     82.00 Hz  Off\n"
              "21 \"März\"  LGainL     3.50 dB   0.00 dB\n");
}

TEST_F(PresetCommand, CheckTellsTheFaultAndTheExitCode)
{
    ASSERT_EQ(run("preset export 3 -o a.zkr"), 0);
    std::string bytes = contentOf(folder / "a.zkr");
    bytes[1129 + 3] = 0x41;  // LGainL, id 28, stands at 41 + 168 + 28 * 32 + 24
    writeContent(folder / "bad.zkr", bytes);
    EXPECT_EQ(run("check a.zkr bad.zkr"), 1);
    EXPECT_NE(out.find("bad.zkr: preset, 2065 bytes: the plug-in undoes the load"),
              std::string::npos)
        << out;
    EXPECT_NE(out.find("  fault at byte 1129 (0x469): the value of LGainL is "), std::string::npos);
    EXPECT_EQ(run("check bad.zkr missing.zkr"), 2) << "the worst of all counts";
    EXPECT_NE(out.find("bad.zkr"), std::string::npos);
    writeContent(folder / "bad.json", "{\"format\": 1");
    EXPECT_EQ(run("check bad.json"), 1);
    EXPECT_NE(out.find("bad.json:1:13: "), std::string::npos) << out;
    EXPECT_EQ(run("check bad.json --plugin missing.so bad.zkr"), 2);
    EXPECT_NE(out.find("the value of parameter 28 is "), std::string::npos)
        << "an image can be checked without the plug-in";
    expectComplaint("preset show --preset-file bad.zkr");
    EXPECT_NE(err.find("at byte 1129 (0x469)"), std::string::npos) << err;
    expectComplaint("bank show a.zkr");
    expectComplaint("preset import bad.json --into a.zkb --at 3");
}

TEST_F(PresetCommand, AFailedSaveLeavesTheOldFile)
{
    for (const char* name : {"x.zkb", "x.json"}) {
        writeContent(folder / name, "old");
        // 8 blocks of 512 bytes: less than any bank.
        EXPECT_EQ(run(std::string("bank export -o ") + name, "ulimit -f 8;"), 2);
        EXPECT_EQ(contentOf(folder / name), "old");
        EXPECT_NE(err.find("File too large"), std::string::npos) << err;
    }
    ASSERT_EQ(run("bank export -o x.zkb"), 0);
    ASSERT_EQ(run("preset export 3 -o v.json"), 0);
    const std::string before = contentOf(folder / "x.zkb");
    EXPECT_EQ(run("preset import v.json --into x.zkb --at 0", "ulimit -f 8;"), 2);
    EXPECT_TRUE(contentOf(folder / "x.zkb") == before);
}

TEST_F(PresetCommand, AudioStartsFromTheChosenPreset)
{
    ASSERT_EQ(run("render in.wav default.wav"), 0);
    ASSERT_EQ(run("render in.wav a.wav --preset Vox"), 0) << err;
    const std::string vox = contentOf(folder / "a.wav");
    EXPECT_FALSE(vox == contentOf(folder / "default.wav"));
    ASSERT_EQ(run("bank export -o mine.zkb"), 0);
    ASSERT_EQ(run("bank export -o mine.json"), 0);
    ASSERT_EQ(run("preset export 3 -o vox.zkr"), 0);
    for (const char* arguments :
         {"--preset 3", "--preset vox", "--preset 3 --bank mine.zkb", "--preset 3 --bank mine.json",
          "--preset-file vox.zkr", "--preset 3 --set LGainL=-0.5 --set LGainL=-1.6"}) {
        ASSERT_EQ(run(std::string("render in.wav b.wav ") + arguments), 0) << err;
        EXPECT_TRUE(contentOf(folder / "b.wav") == vox) << arguments;
    }
    ASSERT_EQ(run("render in.wav b.wav --preset 3 --set LGainL=6"), 0);
    EXPECT_FALSE(contentOf(folder / "b.wav") == vox) << "settings come after the preset";
    ASSERT_EQ(run("render in.wav b.wav --bank mine.zkb"), 0);
    EXPECT_TRUE(contentOf(folder / "b.wav") == contentOf(folder / "default.wav"));

    ASSERT_EQ(run("response --points 3"), 0);
    const std::string flat = out;
    ASSERT_EQ(run("response --points 3 --preset Vox"), 0);
    EXPECT_NE(out.find("\"Vox, left, dB\""), std::string::npos) << out;
    EXPECT_NE(out.substr(out.find('\n')), flat.substr(flat.find('\n')));
    const std::string shaped = out.substr(out.find('\n'));
    ASSERT_EQ(run("response --points 3 --preset Vox --curve a:"), 0);
    EXPECT_EQ(out.substr(out.find('\n')), shaped) << "curves start from the preset, too";
    ASSERT_EQ(run("harmonics --freq 1000 --sweep -20:-10:10"), 0);
    const std::string clean = out;
    ASSERT_EQ(run("harmonics --freq 1000 --sweep -20:-10:10 --preset-file vox.zkr"), 0);
    EXPECT_NE(out, clean);
}

TEST_F(PresetCommand, ADefaultOfTheUserChangesNothing)
{
    const std::string store = "XDG_DATA_HOME='" + (folder / "data") + "'";
    ASSERT_EQ(run("render in.wav a.wav"), 0);
    ASSERT_EQ(run("params"), 0);
    const std::string parameters = out;
    const std::string values = folder / "data/ZKR-soundworks/ZKRT46";
    std::filesystem::create_directories(values);
    ASSERT_EQ(run("preset export Vox -o vox.zkr"), 0);
    std::filesystem::copy_file(folder / "vox.zkr", values + "/DefaultPreset");
    ASSERT_EQ(run("info", store), 0);
    ASSERT_NE(out.find("Vox"), std::string::npos) << "the plug-in did not take the default";
    ASSERT_EQ(run("render in.wav b.wav", store), 0);
    EXPECT_TRUE(contentOf(folder / "a.wav") == contentOf(folder / "b.wav"));
    ASSERT_EQ(run("params", store), 0);
    EXPECT_EQ(out, parameters);
    // Presets are for one plug-in: others keep what they start with.
    EXPECT_EQ(run("render in.wav c.wav --plugin '" TEST_EFFECT_GOOD "'"), 0) << err;
}

}  // namespace
