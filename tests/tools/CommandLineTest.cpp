// The built program: exit codes, messages and files.
#include "tests/tools/CommandLine.h"
#include "tests/support/Noise.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>

#include <nlohmann/json.hpp>

#include <sys/stat.h>

namespace {

using namespace tool;

TEST_F(CommandLine, BadInputGivesOneLineExitCode2AndNoFile)
{
    writeContent(folder / "text.wav", "no audio at all");
    writeContent(folder / "late.csv", "0.1,LGainL,+3\n0.2,LGainL,+99\n");
    ASSERT_EQ(mkfifo((folder / "pipe.wav").c_str(), 0600), 0);
    writeAudio(folder / "mono.wav", {0.5f}, SampleFormat::Int16);
    std::filesystem::create_directory(folder / "links");
    std::filesystem::create_symlink("in.wav", folder / "links/t1.wav");
    for (const char* name : {"own.json", "kept.wav", "links/in.wav"})
        writeContent(folder / name, "");
    std::filesystem::permissions(folder / "kept.wav", std::filesystem::perms::owner_read);
    // clang-format off
    const std::pair<const char*, const char*> cases[]{
        {"", ": no command; 'zkrt46 --help' lists them"},
        {"dance", "there is no command 'dance'; 'zkrt46 --help' lists them"},
        {"render in.wav", "OUT is required"},
        {"render in.wav in.wav", "'in.wav' is the input itself"},
        {"render in.wav mono.wav x.wav", "for more than one file give -o"},
        {"render in.wav mono.wav -o text.wav", "'text.wav' is none and cannot be made one"},
        {"render in.wav mono.wav -o .", "'./in.wav' is one of the inputs"},
        {"render in.wav -o /proc/none", "cannot be made one"},
        {"render in.wav mono.wav -o ''", "the value of --output is empty"},
        {"render in.wav t1.wav -o links", "'links/in.wav' and 'links/t1.wav' are one file"},
        {"render in.wav x.wav --pre-roll nan", "'nan' is not in range 0 to 60"},
        {"render in.wav -o new.wav", "'new.wav' is none and cannot be made one"},
        {"render in.wav ./in.wav -o x", "'in.wav' and './in.wav' would both become 'x/in.wav'"},
        {"render - -o x", "the standard input has no name for a result in 'x'"},
        {"render in.wav x.wav --format flac", "--format does not fit the ending of 'x.wav'"},
        {"render in.wav - --format mp3", "--format is wav, aiff or flac, not 'mp3'"},
        {"render in.wav x.wav --dither loud", "--dither is none, tpdf or shaped, not 'loud'"},
        {"render in.wav -o x --jobs 0", "not in range 1 to 256"},
        {"render in.wav x.wav --jobs 2", "--jobs requires --output"},
        {"render in.wav x.wav --report none/r.csv", "cannot write 'none/r.csv'"},
        {"render in.wav x.wav --automate late.csv --report ./late.csv", "would replace 'late.csv'"},
        {"render in.wav x.wav --preset-file own.json --report own.json", "would replace 'own.json'"},
        {"render in.wav x.wav --preset 3 --bank own.json --report own.json", "would replace"},
        {"render in.wav kept.wav", "cannot write 'kept.wav': it is write-protected"},
        {"render in.wav x.wav --target 3", "not in range -70 to 0"},
        {"render in.wav x.wav --match --target -14", "excludes"},
        {"render in.wav x.wav --report r.txt", "a report ends in .json or .csv"},
        {"render - x.wav </dev/null", "cannot read the standard input as audio"},
        {"render in.wav x.wav --bits 20", "--bits is 16, 24 or 32f, not '20'"},
        {"render in.wav x.wav --block 0", "not in range 1 to 1048576"},
        {"render in.wav x.wav --channels 1", "'in.wav' is stereo and cannot be rendered to mono"},
        {"render in.wav x.wav --set Gain=3", "has no parameter 'Gain'"},
        {"render in.wav x.wav --automate late.csv", "late.csv:2: LGainL cannot be '+99'"},
        {"render in.wav x.wav --automate /dev/zero", "/dev/zero:1: the line is too long"},
        {"render in.wav x.wav --plugin missing.so", "no such plug-in: 'missing.so'"},
        {"render in.wav x.wav --plugin text.wav", "cannot load 'text.wav': "},
        {"params --plugin Z.vst3/", "'Z.vst3/' is a VST 3 plug-in; this program takes VST 2 libraries"},
        {"render mono.wav x.wav --channels 2 --plugin '" TEST_EFFECT_GOOD "'", "does not take mono in and stereo out"},
        {"render \"$(printf 'a\\nb.wav')\" x.wav", "no such file: 'a b.wav'"},
        {"response -o x.pdf", "its name must end in .svg, .png or .csv"},
        {"response --to 30000 -o x.png", "--to lies above half the rate"},
        {"response --rate 1e9", "--rate: '1e9' is not in range 8000 to 400000"},
        {"response --from 2000 --to 1000", "--from must lie below --to"},
        {"harmonics --sweep 0:1", "--sweep is FROM:TO:STEP in dB"},
        {"harmonics --sweep -130:0:10", "--sweep goes from -120 to 20 dBFS at most"},
        {"harmonics --freq 12000", "no harmonic of the tone lies below half the rate"},
        {"edit in.wav", "a FILE is of use only with -o OUT"},
        {"edit -o out.wav", "-o needs a FILE to render"},
        {"edit missing.wav -o x.wav", "no such file: 'missing.wav'"},
        {"edit text.wav -o x.wav", "'text.wav'"},
        {"edit in.wav -o x.mp3", "must end in .wav"},
        {"edit in.wav -o missing/x.wav", "cannot write 'missing/x.wav'"},
        {"edit in.wav -o ./in.wav", "'./in.wav' is the input itself"},
        {"edit --save x.fxb", "a preset's name ends in .zkr, .fxp"},
        {"edit --save missing/x.zkr", "cannot write 'missing/x.zkr'"},
        {"edit --save x.zkr --plugin '" TEST_EFFECT_GOOD "'", "--save is for another plug-in"},
        {"screenshot", "--output is required"},
        {"screenshot -o x.jpg", "a picture's name ends in .png"},
        {"screenshot -o x.png --plugin missing.so", "no such plug-in: 'missing.so'"},
        {"screenshot -o x.png --info --plugin x.so", "--info excludes --plugin"},
        {"preset", "'preset' needs a command; 'zkrt46 preset --help' lists them"},
        {"preset show", "give either a preset's name or index, or --preset-file"},
        {"preset export -o x.fxp", "give either a preset's name or index, or --preset-file"},
        {"preset show 24", "there is no preset 24; they go from 0 to 23"},
        {"preset show Nobody", "there is no preset 'Nobody' in the factory bank"},
        {"preset show 3 --bank pipe.wav", "cannot read 'pipe.wav': it is not an ordinary file"},
        {"preset show 3 --plugin '" TEST_EFFECT_GOOD "'", "is not the plug-in that these presets are for"},
        {"preset export 3 -o x.wav", "a preset's name ends in .zkr, .fxp, .vstpreset or .json"},
        {"preset import text.wav --into x.zkb --at 3", "'text.wav' at byte 0 (0x0): the file does not begin"},
        {"bank", "'bank' needs a command"},
        {"bank show .", "cannot read '.': it is a folder"},
        {"bank export -o x.zkr", "a bank's name ends in .zkb, .fxb, .vstpreset or .json"},
        {"check missing.zkb", "cannot read 'missing.zkb': No such file or directory"},
        {"render in.wav x.wav --preset 3 --preset-file text.wav", "--preset excludes --preset-file"},
        {"render in.wav x.wav --preset 3 --plugin '" TEST_EFFECT_GOOD "'", "presets are for another plug-in"},
    };
    // clang-format on
    for (const auto& [arguments, words] : cases)
        expectComplaint(arguments, words);
    const std::string plugin = "unset ZKRT46_PLUGIN; timeout() { shift; ";
    EXPECT_EQ(run("params", plugin + "env -u ZKRT46_PLUGIN \"$@\"; };"), 2);
    EXPECT_NE(err.find("/ZKRT46.so', nor is it in ../lib/vst; choose one with --plugin"), err.npos);
    EXPECT_EQ(run("params", plugin + "ZKRT46_PLUGIN=no.so \"$@\"; };"), 2);
    EXPECT_EQ(err, "zkrt46: no such plug-in: 'no.so', which ZKRT46_PLUGIN names\n");
    EXPECT_EQ(run("params >/dev/full 2>err.txt #"), 2);
    EXPECT_EQ(err, "zkrt46: cannot write to the standard output\n");
}

TEST_F(CommandLine, AnInterruptionLeavesNoFile)
{
    // A minute of silence in blocks of one sample takes long enough to interrupt.
    std::filesystem::create_directory(folder / "out");
    writeContent(folder / "two.wav", contentOf(folder / "in.wav"));
    const int files = folder.count();
    for (const auto& [signal, code] : {std::pair{"INT", 130}, {"TERM", 143}, {"HUP", 129}})
        for (const char* output : {"x.wav", "two.wav -o out --jobs 2"}) {
            EXPECT_EQ(run(std::string("render in.wav ") + output + " --pre-roll 60 --block 1",
                          std::string("timeout --preserve-status -s ") + signal + " 0.3 env"),
                      code);
            EXPECT_EQ(folder.count(), files) << signal;
            EXPECT_TRUE(std::filesystem::is_empty(folder / "out")) << signal;
        }
    EXPECT_EQ(run("render in.wav x.wav --pre-roll 20 --block 1",
                  "timeout() { shift; ZKRT46_PLUGIN='" ZKRT46_LIBRARY
                  "' nohup \"$@\" & until ls .zkrt46-*; do sleep 0.1; done >/dev/null 2>&1; "
                  "kill -HUP $!; wait $!; }; "),
              0)
        << err;
    EXPECT_EQ(AudioReader(folder / "x.wav").frames(), 4800);
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
    for (const char* dither : {"none", "tpdf", "shaped"})
        EXPECT_EQ(run(std::string("render in.wav ") + dither + ".wav --bits 16 --dither " + dither),
                  0);
    EXPECT_NE(contentOf(folder / "none.wav"), contentOf(folder / "tpdf.wav"));
    EXPECT_NE(contentOf(folder / "shaped.wav"), contentOf(folder / "tpdf.wav"));
    ASSERT_EQ(run("render in.wav d.flac --keep-latency --bits 16"), 0);
    EXPECT_EQ(AudioReader(folder / "d.flac").frames(), 4800 + 96);
    writeContent(folder / "moves.csv", "0, LFreqL, 82\n0, LGainL, 3.5\n0, LShelfL, On\n");
    ASSERT_EQ(run("render in.wav e.wav --pre-roll 0 --automate moves.csv"), 0);
    for (const char* other : {"a.wav", "c.wav"})
        EXPECT_FALSE(contentOf(folder / "e.wav") == contentOf(folder / other)) << other;
}

TEST_F(CommandLine, SumsUpARenderAndWarnsOfClippedSamples)
{
    // The tone is at -6 dB; its side is silent.
    ASSERT_EQ(run("render in.wav x.wav --set Channel=Side --verbose"), 0);
    EXPECT_EQ(out.substr(0, out.find("  speed")),
              R"(in.wav -> x.wav
  audio    4800 samples, 0.10 s at 48000 Hz, stereo to stereo, 24 bits, tpdf dither
           integrated     range   short-term    true peak         peak          RMS
  before    -inf LUFS   0.00 LU    -inf LUFS   -5.63 dBTP   -6.02 dBFS   -9.04 dBFS
  after     -inf LUFS   0.00 LU    -inf LUFS    -inf dBTP    -inf dBFS    -inf dBFS
  latency  96 samples, taken out
)");
    writeAudio(folder / "float.wav", std::vector<float>(4800, 0.7f), SampleFormat::Float32, 48000);
    const std::pair<const char*, std::size_t> rows[]{
        {"in.wav x.wav --bits 16", 4},
        {"in.wav x.wav", 6},
        {"float.wav x.wav --set Channel=Middle", 4},
        {"float.wav x.wav --set Channel=Middle --bits 24", 3}};
    for (const auto& [arguments, bytes] : rows) {
        EXPECT_EQ(run(std::string("render ") + arguments), 0);
        EXPECT_EQ(contentOf(folder / "x.wav").size() / 4800, bytes) << arguments;
        EXPECT_EQ(err.find("'x.wav': 499 samples were clipped") != err.npos, bytes == 3) << err;
    }
    for (const auto& [name, bytes] : {std::pair{"f.aif", 4u}, {"f.flac", 0u}}) {
        EXPECT_EQ(run(std::string("render float.wav ") + name), 0) << err;
        EXPECT_EQ(contentOf(folder / name).size() / 4800, bytes) << "FLAC holds no floats";
    }
}

TEST_F(CommandLine, SaysWhichSettingsChangeNothing)
{
    const std::pair<const char*, const char*> rows[]{
        {"LGain=9", "note: LGain=9 changes nothing with these settings"},
        {"Drive=6", "note: Drive=6 changes nothing with these settings"},
        {"HGainR2=3", "note: HGainR2=3 changes nothing with these settings"},
        {"LGain=-9 --set LFreqR=82", ""},
        {"LGainL=9 --set LFreqR=82", "note: LGainL=9 changes nothing with these settings"},
        {"Drive=6 --set QB11=On", ""},
        {"LGain=0", ""},
        {"Drive=6 --set QB11=On --set TrfoDsL=On", ""},
        {"Drive=6 --set QB11=On --set AmpDsbL=On", ""},
    };
    for (const auto& [settings, words] : rows) {
        EXPECT_EQ(run(std::string("render in.wav x.wav --set ") + settings), 0);
        EXPECT_EQ(err.empty(), *words == '\0') << settings << ": " << err;
        EXPECT_NE(err.find(words), std::string::npos) << settings << ": " << err;
    }
}

TEST_F(CommandLine, RendersAnAlbumAsOneByOneAndGoesOnAfterAFailure)
{
    const auto fileOf = [](int track, const std::string& suffix) {
        return "track " + std::to_string(track) + suffix + (track == 5 ? ".aif" : ".wav");
    };
    std::string inputs;
    for (int track = 1; track <= 5; ++track) {
        const std::string name = fileOf(track, "");
        // The fourth is longer than the limit for the size of files below allows.
        writeAudio(folder / name, noise(track == 4 ? 90000 : 9000, static_cast<unsigned>(track)),
                   SampleFormat::Int16, 44100, 2);
        inputs += " '" + name + "'";
    }
    writeContent(folder / "track 2.wav", contentOf(folder / "track 2.wav").substr(0, 12000));
    const std::string settings = " --set LFreq=82 --set LGain=3 ";
    EXPECT_EQ(run("render" + inputs + " missing.mp3 -o out --suffix _m --jobs 2 --report out/r.json"
                      + settings,
                  "ulimit -f 200; "),
              2);
    EXPECT_NE(err.find("zkrt46: no such file: 'missing.mp3'\n"), std::string::npos) << err;
    EXPECT_NE(err.find("cannot write 'out/track 4_m.wav': File too large\n"), std::string::npos)
        << err;
    EXPECT_NE(err.find("warning: 'track 2.wav' is cut short: its header states"), std::string::npos)
        << err;
    const auto report = nlohmann::json::parse(contentOf(folder / "out/r.json"));
    ASSERT_EQ(report.size(), 6u);
    EXPECT_EQ(report[0]["state"], "rendered");
    EXPECT_EQ(report[0]["bits"], 24);
    EXPECT_LT(report[0]["after"]["true_peak_dbtp"], 3.0);
    EXPECT_EQ(report[3]["state"], "failed");
    EXPECT_EQ(report[4]["output"], "out/track 5_m.aif");
    EXPECT_EQ(report[5]["error"], "no such file: 'missing.mp3'");
    EXPECT_EQ(report[5]["output"], "out/missing_m.wav");

    // The rest, with the failed one now, and the table.
    const auto before = std::filesystem::last_write_time(folder / "out/track 1_m.wav");
    EXPECT_EQ(run("render" + inputs + " -o out --suffix _m --skip-existing -v" + settings), 0);
    EXPECT_EQ(std::filesystem::last_write_time(folder / "out/track 1_m.wav"), before);
    EXPECT_NE(out.find("track 1.wav  skipped\n"), std::string::npos) << out;
    EXPECT_EQ(out.rfind("file             before       after    true peak\n", 0), 0u) << out;
    EXPECT_NE(out.find("\n5 files: 1 rendered, 4 skipped, 0 failed;"), std::string::npos) << out;

    // The same files from one command for each, which GNU parallel starts.
    EXPECT_EQ(run("render {} -o each --suffix _m" + settings + ":::" + inputs,
                  "program() { parallel --will-cite --sshlogin : --workdir . -q "
                  "env ZKRT46_PLUGIN='" ZKRT46_LIBRARY "' '" ZKRT46_PROGRAM "' \"$@\"; }; "
                  "timeout() { shift 2; program \"$@\"; }; "),
              1)
        << err;
    for (int track = 1; track <= 5; ++track) {
        const std::string name = fileOf(track, "_m");
        EXPECT_EQ(contentOf(folder / ("out/" + name)), contentOf(folder / ("each/" + name))) << name;
    }
    EXPECT_EQ(run("render missing.wav" + inputs + " -o 'my \"best\"' --report r.csv --jobs 1"), 2)
        << "the file that is cut short comes after the one that failed";
    const std::string table = contentOf(folder / "r.csv");
    EXPECT_EQ(table.rfind("input,output,state,error,rate_hz,", 0), 0u);
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 1 + 6);
    EXPECT_NE(table.find("\n\"track 1.wav\",\"my \"\"best\"\"/track 1.wav\",\"rendered\","),
              table.npos)
        << table;
}

TEST_F(CommandLine, ReadsAndWritesStandardStreams)
{
    EXPECT_EQ(run("render in.wav x.flac --bits 16"), 0);
    EXPECT_EQ(run("render - - --bits 16 --format flac -v <in.wav 2>err.txt | cat >y.flac; #"), 0);
    EXPECT_EQ(contentOf(folder / "x.flac"), contentOf(folder / "y.flac"));
    EXPECT_NE(err.find("  after "), std::string::npos) << "the summary spoils the audio";
    EXPECT_EQ(run("render in.wav - >/dev/full 2>err.txt #"), 2);
    EXPECT_EQ(err, "zkrt46: cannot write the standard output: No space left on device\n");
    // Without standard streams, messages must not get into files that are written.
    const std::string options = " --bits 16 --format flac --pre-roll 20 ";
    EXPECT_EQ(run("render in.wav x.flac" + options), 0);
    EXPECT_EQ(run("render in.wav none.wav -o all -j 2" + options + ">&- 2>&- #"), 2);
    EXPECT_EQ(contentOf(folder / "all/in.flac"), contentOf(folder / "x.flac"));
}

TEST_F(CommandLine, ListsParametersAndChecksTheLatency)
{
    EXPECT_EQ(run("params"), 0);
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 1 + 58);
    EXPECT_NE(out.find("   26  LFreqL        9  Off         Hz    Off, 550.00, 430.00"),
              std::string::npos);
    EXPECT_NE(out.find("   28  LGainL      320  0.00        dB    -16.00 to 16.00\n"),
              std::string::npos);
    EXPECT_EQ(run("params MFreqL"), 0);
    EXPECT_EQ(out,
              "MFreqL (Hz): Off 5600.00 4600.00 3800.00 3000.00 2500.00 1800.00 1200.00 "
              "800.00 680.00\n");
    EXPECT_EQ(run("info"), 0);
    EXPECT_NE(out.find("\"Zt46\" (0x5A743436)"), std::string::npos);
    EXPECT_NE(out.find("4 (mastering)"), std::string::npos);
    EXPECT_EQ(
        out.substr(out.find("Flags ")),
        R"(Flags                  has an editor, replaces, keeps its state in chunks, silent without input (561)
Inputs                 2: "Stereo In" (stereo), "Stereo In" (stereo)
Outputs                2: "Stereo Out" (stereo), "Stereo Out" (stereo)
Parameters             58
Programs               1
Program's name         Default
Bank chunk             48641 bytes
Program chunk          48641 bytes
Tail                   not reported
Latency, samples       96 at 44100 Hz, 96 at 48000 Hz, 96 at 88200 Hz, 96 at 96000 Hz, 0 at 176400 Hz, 0 at 192000 Hz
Channels taken         mono to mono, mono to stereo, stereo to stereo
Channels refused       stereo to mono
Can do
  receiveVstTimeInfo   yes
  receiveVstEvents     no
  receiveVstMidiEvent  no
  sendVstEvents        no
  sendVstMidiEvent     no
  midiProgramNames     yes
  bypass               no
  offline              yes
)");
    EXPECT_EQ(run("latency"), 0) << out;
    // Two header lines, six rates in three states each, and the result.
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 2 + 18 + 1);
    EXPECT_EQ(out.find('!'), out.npos) << "delays marked as wrong";
}

TEST_F(CommandLine, WritesMeasurementsAsTablesAndPictures)
{
    EXPECT_EQ(run("response --points 5 --curve 'up: LFreqL=82 LGainL=6' --curve flat: -o r.csv"), 0)
        << err;
    const std::string table = contentOf(folder / "r.csv");
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 1 + 5);
    EXPECT_EQ(table.rfind("hz,\"up, left, dB\"", 0), 0u);
    EXPECT_EQ(run("response --points 2 --set MS=MidSide"), 0);
    EXPECT_EQ(out.rfind("hz,\"MS=MidSide, mid, dB\"", 0), 0u);
    EXPECT_EQ(run("response --points 2 --view lr --set MS=MidSide --curve a:"), 0);
    EXPECT_EQ(out.rfind("hz,\"a, left, dB\"", 0), 0u);
    writeContent(folder / ".gnuplot", "set datafile separator ','");
    EXPECT_EQ(run("response --points 5 --curve \"it's_100%:\" --range 7 --title T -o r.SVG",
                  "HOME=$PWD"),
              0)
        << err;
    const std::string svg = contentOf(folder / "r.SVG");
    EXPECT_NE(svg.find("</svg>"), std::string::npos);
    EXPECT_NE(svg.find("it's_100%"), std::string::npos) << "the title was changed";
    EXPECT_NE(svg.find("T (44100 Hz, sine at -40 dBFS)"), std::string::npos);
    EXPECT_NE(svg.find(">+7<"), std::string::npos) << "the upper end of the range";
    EXPECT_EQ(run("response --points 2 -o r.png"), 0) << err;
    EXPECT_EQ(contentOf(folder / "r.png").substr(1, 3), "PNG");
    EXPECT_EQ(run("harmonics --freq 8000 --sweep -10:-20:10"), 0) << err;
    EXPECT_NE(out.find("\n  -20.00     -20.13    -76.4        -"), std::string::npos) << out;
    EXPECT_EQ(out.substr(out.size() - 11), "    0.0393\n") << out;
    EXPECT_EQ(run("harmonics --freq 8000 --level -20 --set BpsCh2=On -o h.csv"), 0) << err;
    out = contentOf(folder / "h.csv");
    EXPECT_LT(out.find("8000.000000,left,-20.126"), out.find("right,-20.07"));
    EXPECT_NE(out.find("-76.4200,,,,,,,,,0.0151"), std::string::npos) << out;
    // The axis is as wide as the curves at the frequencies shown, and each curve has its name both
    // beside it and in the legend.
    const struct {
        const char *arguments, *end, *beyond, *label;
    } axes[]{
        {"response --points 9 --from 20 --curve 'cut: QB11=On Hpf=800'", ">-72<", ">-78<", ">cut<"},
        {"response --points 9 --from 2000 --curve 'cut: QB11=On Hpf=800'", ">-3<", ">-3.5<",
         ">cut<"},
        {"response --points 9 --from 2000 --curve 'up: HFreq=12000 HGain=16'", ">+18<", ">+20<",
         ">up<"},
        {"response --points 9 --to 50 --curve 'up: HFreqL=12000 HGainL=16'", ">+3<", ">+3.5<",
         ">up, right<"},
        {"response --points 9 --curve '1234567890 1234567890 \xC3\xA4 3456789:'", ">+3<", ">+3.5<",
         ">1234567890 1234567890 \xC3\xA4 3\xE2\x80\xA6<"},
        {"harmonics --freq 50 --sweep -80:-70:5", ">-200<", ">+20<", ">H10<"},
        {"harmonics --freq 4000 --sweep -6:0:3", ">-120<", ">-140<", ">H5<"},
    };
    for (const auto& [arguments, end, beyond, label] : axes) {
        SCOPED_TRACE(arguments);
        EXPECT_EQ(run(std::string(arguments) + " -o axis.svg"), 0) << err;
        const std::string picture = contentOf(folder / "axis.svg");
        for (const char* text : {end, label})
            EXPECT_NE(picture.find(text), picture.npos) << text;
        EXPECT_EQ(picture.find(beyond), picture.npos);
    }
    EXPECT_EQ(run("response --points 2 -o x.png", "timeout() { shift; PATH=/nowhere \"$@\"; };"),
              2);
    EXPECT_NE(err.find("gnuplot"), std::string::npos) << err;
    std::filesystem::create_directory(folder / "killed");
    writeContent(folder / "killed/gnuplot",
                 "#!/bin/sh\ncat >/dev/null\necho half\nkill -KILL $$\n");
    std::filesystem::permissions(folder / "killed/gnuplot", std::filesystem::perms::owner_all);
    EXPECT_EQ(
        run("response --points 2 -o x.png", "timeout() { shift; PATH=$PWD/killed:$PATH \"$@\"; };"),
        2)
        << err;
    EXPECT_FALSE(std::filesystem::exists(folder / "x.png"));
}

// One JSON text, in which these values are found by their pointers.
TEST_F(CommandLine, PrintsJsonForOtherPrograms)
{
    writeContent(folder / "a\"\x01\xC3\xA4\xFF.zkb", "junk");
    const struct {
        const char* arguments;
        int code;
        std::vector<std::pair<const char*, const char*>> values;
    } cases[]{
        {"params",
         0,
         {{"/0/title", R"("Power")"}, {"/28/steps", "320"}, {"/28/defaultNormalised", "0.5"}}},
        {"params lfreql", 0, {{"/0/index", "26"}, {"/0/values/9", R"("33.00")"}, {"/1", ""}}},
        {"info",
         0,
         {{"/vendorVersion", R"("1.0.1.0")"},
          {"/uniqueId", "1517564982"},
          {"/flagNames/3", R"("silent without input")"},
          {"/latencies/4", R"({"rate":176400,"samples":0})"},
          {"/arrangements/2/taken", "false"},
          {"/canDo/bypass", "false"}}},
        {"latency", 0, {{"/delays/17/measured", "[0,0,0,0,0,0,0]"}, {"/wrong", "0"}}},
        {"preset show Vox",
         0,
         {{"/format", R"("zkrt46-preset")"}, {"/parameters/Power/stored", "1"}}},
        {"check a* none",
         2,
         {{"/0/file", "\"a\\\"\\u0001\xC3\xA4\xEF\xBF\xBD.zkb\""},
          {"/0/findings/0/fault", "true"},
          {"/0/findings/0/byte", "4"},
          {"/1/error", R"("cannot read 'none': No such file or directory")"}}},
    };
    for (const auto& [arguments, code, values] : cases) {
        SCOPED_TRACE(arguments);
        EXPECT_EQ(run(std::string(arguments) + " --json"), code) << err;
        const nlohmann::json printed = nlohmann::json::parse(out, nullptr, false);
        ASSERT_FALSE(printed.is_discarded()) << out;
        for (const auto& [pointer, value] : values) {
            const nlohmann::json::json_pointer place(pointer);
            EXPECT_EQ(printed.contains(place) ? printed[place].dump() : "", value) << pointer;
        }
    }
}

TEST_F(CommandLine, HelpAndManualPageTellEveryOption)
{
    EXPECT_EQ(run("--version"), 0);
    EXPECT_EQ(out, "zkrt46 1.0.1.0\n");
    const auto longest = [this] {
        std::size_t length = 0;
        std::istringstream lines(out);
        for (std::string line; std::getline(lines, line);)
            length = std::max(length, line.size());
        return length;
    };
    EXPECT_EQ(run("--help-all", "COLUMNS=120"), 0);
    EXPECT_GT(longest(), 115u);
    EXPECT_LE(longest(), 120u);
    EXPECT_EQ(run("--help-all"), 0);
    EXPECT_LE(longest(), 80u);
    EXPECT_NE(out.find("8000 to 400000"), out.npos);
    EXPECT_EQ(out.find(".000000"), out.npos);
    // The options in lines that begin so.
    const auto named = [](const std::string& text, const std::vector<std::string>& starts) {
        std::set<std::string> names;
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            line.erase(std::remove(line.begin(), line.end(), '\\'), line.end());
            if (std::none_of(starts.begin(), starts.end(),
                             [&](const std::string& start) { return line.rfind(start, 0) == 0; }))
                continue;
            for (std::size_t at = 0; (at = line.find("--", at)) != line.npos;) {
                const std::size_t end = line.find_first_not_of("abcdefghijklmnopqrstuvwxyz-", at);
                names.insert(line.substr(at, end - at));
                at = std::min(end, line.size());
            }
        }
        return names;
    };
    const std::set<std::string> told = named(out, {"  -"});
    EXPECT_GT(told.size(), 30u);
    EXPECT_EQ(run("--manual-page 2026-01-02 | tee page | groff -ww -man -z 2>err.txt #"), 0);
    EXPECT_EQ(err, "");
    out = contentOf(folder / "page");
    EXPECT_NE(out.find("\"2026-01-02\""), out.npos) << out.substr(0, 200);
    EXPECT_NE(out.find("\\(dqMastering round\\(dq"), out.npos);
    EXPECT_EQ(named(out, {".B ", ".BI "}), told);
}

TEST_F(CommandLine, BashCompletesCommandsOptionsAndValues)
{
    for (const char* name : {"mix 1.wav", "x.flac", "b.zkb", "p.json"})
        writeContent(folder / name, "");
    std::filesystem::create_directory(folder / "sub");
    ASSERT_EQ(run("--completion bash >c.bash #"), 0);
    const std::pair<const char*, const char*> cases[]{
        {"''", "render params info latency response harmonics preset bank check edit screenshot"},
        {"preset ''", "list show export import"},
        {"bank diff ''", "sub b.zkb p.json"},
        {"bank diff --p", "--plugin"},
        {"render --bits ''", "16 24 32f"},
        {"render -o ''", "sub"},
        {"render --preset ''", ""},
        {"response -o x.png --view ''", "auto lr ms"},
        {"render --set LFre", "LFreqL= LFreqR= LFreqL2= LFreqR2= LFreq= LFreq2="},
        {"render --set LFreq = ''", ""},
        {"render 'mix\\ '", "mix 1.wav"},
        {"edit --pre", "--preset --preset-file"},
    };
    for (const auto& [words, completed] : cases) {
        writeContent(folder / "try.bash",
                     "source c.bash\nCOMP_WORDS=(zkrt46 " + std::string(words)
                         + ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_zkrt46\n"
                           "echo \"${COMPREPLY[*]}\" >out.txt\n");
        EXPECT_EQ(std::system(("cd '" + (folder / "") + "' && bash try.bash").c_str()), 0);
        EXPECT_EQ(contentOf(folder / "out.txt"), std::string(completed) + "\n") << words;
    }
}

}  // namespace
