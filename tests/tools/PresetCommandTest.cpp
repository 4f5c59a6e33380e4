// Presets and banks in the built program: conversion, tables, and rendering.
#include "presets/BankFormat.h"
#include "presets/FactoryBank.h"
#include "tests/tools/CommandLine.h"
#include "tools/host/NativePlugin.h"

#include <algorithm>
#include <filesystem>

namespace {

class PresetCommand : public CommandLine { };

TEST_F(PresetCommand, EveryKindOfFileHoldsTheSame)
{
    for (const std::string kind : {"fxp", "zkr", "vstpreset", "json"}) {
        ASSERT_EQ(run("preset export R101 -o a." + kind), 0) << err;
        ASSERT_EQ(run("preset import a." + kind + " --at 3 -o " + kind + ".zkb"), 0) << err;
        EXPECT_TRUE(contentOf(folder / (kind + ".zkb")) == contentOf(folder / "fxp.zkb")) << kind;
        ASSERT_EQ(run("preset export --preset-file a." + kind + " -o b.fxp"), 0) << err;
        EXPECT_TRUE(contentOf(folder / "b.fxp") == contentOf(folder / "a.fxp")) << kind;
    }
    for (const std::string kind : {"fxb", "vstpreset", "json"}) {
        ASSERT_EQ(run("bank export fxp.zkb -o b." + kind), 0) << err;
        ASSERT_EQ(run("bank import b." + kind + " -o b.zkb"), 0) << err;
        EXPECT_TRUE(contentOf(folder / "b.zkb") == contentOf(folder / "fxp.zkb")) << kind;
    }
    EXPECT_EQ(contentOf(folder / "b.zkb").size(), kBankImageSize);
    ASSERT_EQ(run("bank export -o b.json"), 0) << err;
    EXPECT_EQ(run("bank diff b.json"), 0) << "must be compared with the factory bank";
    EXPECT_EQ(out, "The banks are equal\n");
    EXPECT_EQ(run("check b.zkb b.json b.fxb"), 0);
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 3) << out;
    expectComplaint("bank show a.fxp", "is a preset, but a bank is wanted here");
    expectComplaint("preset show --preset-file b.fxb", "is a bank, but a preset is wanted here");
    expectComplaint("preset export 3 -o a.fxb", "ends in .zkr, .fxp, .vstpreset or .json");
}

// The chunk stands at the end of the files, behind a header of 60 or 160 bytes.
TEST_F(PresetCommand, FilesOfVst2HostsHoldTheChunkOfTheLibrary)
{
    const auto chunkOf = [this](const char* name, std::size_t header) {
        const std::string file = contentOf(folder / name);
        std::size_t size = 0;  // the field at byte 4: the number of bytes behind it
        for (std::size_t i = 4; i < 8; ++i)
            size = size << 8 | static_cast<std::uint8_t>(file.at(i));
        EXPECT_EQ(size, file.size() - 8);
        return std::vector<std::uint8_t>(file.begin() + static_cast<std::ptrdiff_t>(header),
                                         file.end());
    };
    ASSERT_EQ(run("bank export -o a.fxb"), 0) << err;
    ASSERT_EQ(run("preset export R101 -o a.fxp"), 0) << err;
    host::NativePlugin plugin(ZKRT46_LIBRARY);
    EXPECT_TRUE(chunkOf("a.fxb", 160) == plugin.bankChunk());
    plugin.setProgramChunk(chunkOf("a.fxp", 60));
    EXPECT_EQ(plugin.programName(), "R101");
    for (std::size_t id = 0; id < kPresetParamCount; ++id)
        EXPECT_EQ(plugin.parameter(static_cast<VstInt32>(id)), factoryBank()[19].values[id]) << id;

    // What a host then saves: the whole bank, of which it shows the selected preset.
    plugin.setParameter(28, 0.75f);
    const std::vector<std::uint8_t> chunk = plugin.programChunk();
    std::string file = contentOf(folder / "a.fxp").substr(0, 56);
    for (const int shift : {24, 16, 8, 0})
        file += static_cast<char>(chunk.size() >> shift);
    writeContent(folder / "b.fxp", file.append(chunk.begin(), chunk.end()));
    ASSERT_EQ(run("preset show --preset-file b.fxp"), 0) << err;
    EXPECT_EQ(out.rfind("Preset \"R101\" in 'b.fxp'\n", 0), 0u) << out;
    EXPECT_NE(out.find("LGainL   8.00 dB     0.75\n"), std::string::npos) << out;
    ASSERT_EQ(run("preset list --bank b.fxp"), 0) << err;
    EXPECT_NE(out.find("\n0      R101"), std::string::npos) << out;
    EXPECT_NE(out.find("\n1      Fat Kick"), std::string::npos) << out;
}

// A name takes precedence over an index.
TEST_F(PresetCommand, ABankKeepsItsCurrentPresetAndIsFoundInByNameOrIndex)
{
    writeContent(folder / "a.json",
                 R"({"format": "zkrt46-bank", "version": 1, "currentPreset": 2, "presets":
                     [{"name": "A"}, {"name": "B"},
                      {"name": "0", "parameters": {"LGainL": {"stored": 0.5001}}}]})");
    ASSERT_EQ(run("bank import a.json -o a.zkb"), 0) << err;
    const std::pair<const char*, const char*> rows[]{
        {"bank show a.zkb", "Current preset: 2 \"0\"\n"},
        {"bank diff a.zkb", "           (current preset)  2 "},
        {"preset list --bank a.zkb", "\n1      B     -\n2      0     1\n"},
        {"preset show 0 --bank a.zkb", "Preset 2 \"0\" of 'a.zkb'\n"},
        {"preset show 001 --bank a.zkb", "Preset 1 \"B\" of 'a.zkb'\nEvery parameter is at its"},
        {"bank export a.zkb -o a.vstpreset", ""},
        {"preset show --preset-file a.vstpreset", "Preset \"0\" in 'a.vstpreset'\n"},
        {"preset export B --bank a.zkb -o b.zkr", ""},
        {"preset import b.zkr --into a.zkb --at 2 -o b.zkb", ""},
        {"bank diff a.zkb b.zkb", "\n2 \"0\"   LGainL     0.00 dB (0.5001)  0.00 dB (0.5)\n"},
    };
    for (const auto& [command, words] : rows) {
        run(command);
        EXPECT_NE(out.find(words), std::string::npos) << command << ": " << out << err;
    }
}

TEST_F(PresetCommand, APresetCanBeMovedBetweenBanksThroughAFile)
{
    writeContent(folder / "mine.json",
                 "\xEF\xBB\xBF"
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

TEST_F(PresetCommand, CheckReportsTheFaultAndSetsTheExitCode)
{
    ASSERT_EQ(run("preset export 3 -o a.zkr"), 0);
    std::string bytes = contentOf(folder / "a.zkr");
    bytes[1129 + 3] = 0x41;  // LGainL, id 28, is at 41 + 168 + 28 * 32 + 24
    writeContent(folder / "bad.zkr", bytes);
    writeContent(folder / "bad.json", "{\"format\": 1");
    const struct {
        const char* files;
        int code;  // that of the worst file
        const char* words;
    } rows[]{
        {"a.zkr bad.zkr", 1,
         "bad.zkr: preset, 2065 bytes: the plug-in undoes the load as a whole and keeps the "
         "preset"},
        {"bad.zkr missing.zkr", 2, "  fault at byte 1129 (0x469): the value of LGainL is "},
        {"bad.json", 1, "bad.json:1:13: "},
        {"a.zkr", 0, "a.zkr: preset, 2065 bytes: no faults; the plug-in takes all of it\n"},
        // An image can be checked without the plug-in.
        {"bad.json --plugin missing.so bad.zkr", 2, "the value of parameter 28 is "},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(run(std::string("check ") + row.files), row.code) << row.files;
        EXPECT_NE(out.find(row.words), std::string::npos) << out;
    }
    expectComplaint("preset show --preset-file bad.zkr");
    EXPECT_NE(err.find("at byte 1129 (0x469)"), std::string::npos) << err;
    expectComplaint("bank show a.zkr", "is a preset, but a bank is wanted here");
    expectComplaint("preset import bad.json --into a.zkb --at 3");
}

TEST_F(PresetCommand, AudioStartsFromTheChosenPreset)
{
    const auto rendered = [this](const std::string& options, const std::string& before = "") {
        EXPECT_EQ(run("render in.wav a.wav " + options, before), 0) << options << ": " << err;
        return contentOf(folder / "a.wav");
    };
    const auto printed = [this](const std::string& command) {
        EXPECT_EQ(run(command), 0) << command << ": " << err;
        return out.substr(out.find('\n'));
    };
    const std::string plain = rendered(""), vox = rendered("--preset Vox");
    EXPECT_FALSE(vox == plain);
    ASSERT_EQ(run("bank export -o mine.zkb"), 0);
    ASSERT_EQ(run("bank export -o mine.json"), 0);
    ASSERT_EQ(run("preset export 3 -o vox.zkr"), 0);
    for (const char* options :
         {"--preset vox", "--preset 3 --bank mine.zkb", "--preset 3 --bank mine.json",
          "--preset-file vox.zkr", "--preset 3 --set LGainL=-0.5 --set LGainL=-1.6"})
        EXPECT_TRUE(rendered(options) == vox) << options;
    EXPECT_FALSE(rendered("--preset 3 --set LGainL=6") == vox) << "settings must come last";
    EXPECT_TRUE(rendered("--bank mine.zkb") == plain);

    const std::string shaped = printed("response --points 3 --preset Vox");
    EXPECT_EQ(out.rfind("hz,\"Vox, left, dB\"", 0), 0u) << out;
    EXPECT_NE(shaped, printed("response --points 3"));
    EXPECT_EQ(shaped, printed("response --points 3 --preset Vox --curve a:"))
        << "curves must start from the preset";
    const std::string harmonics = "harmonics --freq 1000 --sweep -20:-10:10 ";
    EXPECT_NE(printed(harmonics), printed(harmonics + "--preset-file vox.zkr"));

    // A default preset that the user has stored has no effect.
    const std::string store = "XDG_DATA_HOME='" + (folder / "data") + "'";
    const std::string values = folder / "data/ZKR-soundworks/ZKRT46";
    std::filesystem::create_directories(values);
    std::filesystem::copy_file(folder / "vox.zkr", values + "/DefaultPreset");
    ASSERT_EQ(run("info", store), 0);
    ASSERT_NE(out.find("Vox"), std::string::npos) << "the plug-in did not take the default";
    EXPECT_TRUE(rendered("", store) == plain);
    const std::string parameters = printed("params");
    ASSERT_EQ(run("params", store), 0);
    EXPECT_EQ(out.substr(out.find('\n')), parameters);
    // Other plug-ins get no preset.
    rendered("--plugin '" TEST_EFFECT_GOOD "'");
}

}  // namespace
