// The built program: exit codes, messages and files.
#include "tests/tools/CommandLine.h"

#include <algorithm>

#include <sys/stat.h>

namespace {

using namespace tool;

TEST_F(CommandLine, BadInputGivesOneLineExitCode2AndNoFile)
{
    writeContent(folder / "text.wav", "no audio at all");
    writeContent(folder / "late.csv", "0.1,LGainL,+3\n0.2,LGainL,+99\n");
    ASSERT_EQ(mkfifo((folder / "pipe.wav").c_str(), 0600), 0);
    const char* cases[]{"",
                        "dance",
                        "render in.wav",
                        "render in.wav x.wav --bits 20",
                        "render in.wav x.wav --block 0",
                        "render in.wav x.wav --channels 1",
                        "render in.wav x.wav --set Gain=3",
                        "render in.wav x.wav --automate late.csv",
                        "render in.wav x.wav --automate /dev/zero",
                        "render in.wav x.wav --plugin missing.so",
                        "render in.wav x.wav --plugin text.wav",
                        "response -o x.pdf",
                        "response --to 30000 -o x.png",
                        "harmonics --sweep 0:1",
                        "edit in.wav",
                        "edit -o out.wav",
                        "screenshot",
                        "preset",
                        "preset show",
                        "preset show 24",
                        "preset show Nobody",
                        "preset show 3 --bank pipe.wav",
                        "preset export 3 -o x.wav",
                        "preset import text.wav --into x.zkb --at 3",
                        "bank",
                        "bank show /dev/zero",
                        "bank export -o x.zkr",
                        "check missing.zkb",
                        "render in.wav x.wav --preset-file text.wav",
                        "render in.wav x.wav --preset 3 --preset-file text.wav",
                        "render in.wav x.wav --preset 3 --plugin '" TEST_EFFECT_GOOD "'"};
    for (const char* arguments : cases)
        expectComplaint(arguments);
}

TEST_F(CommandLine, AnInterruptionLeavesNoFile)
{
    // A minute of silence in blocks of one sample takes long enough to interrupt.
    const int files = folder.count();
    EXPECT_NE(run("render in.wav x.wav --pre-roll 60 --block 1", "timeout -s INT 0.2 env"), 0);
    EXPECT_EQ(folder.count(), files);
}

TEST_F(CommandLine, RendersWithoutOutputAndTheSameInAnyBlockSize)
{
    ASSERT_EQ(run("render in.wav a.wav --set LFreqL=82 --set LGainL=+3.5 --set LShelfL=on"), 0);
    EXPECT_EQ(out + err, "");
    ASSERT_EQ(run("render in.wav b.wav --block 17 --set LFreqL=82 --set LGainL=+3.5 "
                  "--set LShelfL=on --verbose"),
              0);
    EXPECT_NE(out.find("latency"), std::string::npos);
    EXPECT_TRUE(contentOf(folder / "a.wav") == contentOf(folder / "b.wav"));
    EXPECT_EQ(AudioReader(folder / "a.wav").frames(), 4800);
    ASSERT_EQ(run("render in.wav c.wav"), 0);
    EXPECT_FALSE(contentOf(folder / "a.wav") == contentOf(folder / "c.wav"))
        << "the settings had no effect";
    ASSERT_EQ(run("render in.wav d.flac --keep-latency --bits 16"), 0);
    EXPECT_EQ(AudioReader(folder / "d.flac").frames(), 4800 + 96);
}

TEST_F(CommandLine, ListsParametersAndChecksTheLatency)
{
    EXPECT_EQ(run("params"), 0);
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 1 + 58);
    EXPECT_NE(out.find("   26  LFreqL        9  Off         Hz    Off, 550.00, 430.00"),
              std::string::npos);
    EXPECT_EQ(run("params MFreqL"), 0);
    EXPECT_EQ(out,
              "MFreqL (Hz): Off 5600.00 4600.00 3800.00 3000.00 2500.00 1800.00 1200.00 "
              "800.00 680.00\n");
    EXPECT_EQ(run("info"), 0);
    EXPECT_NE(out.find("\"Zt46\" (0x5A743436)"), std::string::npos);
    EXPECT_NE(out.find("4 (mastering)"), std::string::npos);
    EXPECT_EQ(run("latency"), 0) << out;
    // Two header lines, six rates in three states each, and the result.
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 2 + 18 + 1);
}

TEST_F(CommandLine, WritesMeasurementsAsTablesAndPictures)
{
    EXPECT_EQ(run("response --points 5 --curve 'up: LFreqL=82 LGainL=6' --curve flat: -o r.csv"), 0)
        << err;
    const std::string table = contentOf(folder / "r.csv");
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 1 + 5);
    EXPECT_EQ(table.rfind("hz,\"up, left, dB\"", 0), 0u);
    EXPECT_EQ(run("response --points 5 --set MS=MidSide --curve \"it's_100%:\" -o r.SVG"), 0)
        << err;
    const std::string svg = contentOf(folder / "r.SVG");
    EXPECT_NE(svg.find("</svg>"), std::string::npos);
    EXPECT_NE(svg.find("it's_100%"), std::string::npos) << "the title was changed";
    EXPECT_EQ(run("harmonics --freq 1000 --sweep -20:-10:10 -o h.png"), 0) << err;
    EXPECT_EQ(contentOf(folder / "h.png").substr(1, 3), "PNG");
    EXPECT_EQ(run("harmonics --freq 1000 --sweep -20:-10:10"), 0) << err;
    EXPECT_NE(out.find("THD"), std::string::npos);
    EXPECT_EQ(run("response --points 2 -o x.png", "timeout() { shift; PATH=/nowhere \"$@\"; };"),
              2);
    EXPECT_NE(err.find("gnuplot"), std::string::npos) << err;
}

}  // namespace
