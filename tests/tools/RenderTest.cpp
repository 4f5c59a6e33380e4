// The renderer with a mock plug-in: a delay, a gain set by its parameter, and an inverted right
// channel.
#include "tools/audio/Render.h"
#include "tests/support/Noise.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/tools/AudioContent.h"
#include "tests/tools/Complaint.h"
#include "tests/tools/FakePlugin.h"
#include "tools/common/Progress.h"
#include "tools/common/ToolError.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <numeric>
#include <tuple>

namespace {

using namespace tool;

constexpr int kDelay = 96;
constexpr int kRate = 48000;

class Rendering : public ::testing::Test {
protected:
    Rendering()
    {
        job.input = folder / "in.wav";
        job.output = folder / "out.wav";
        job.format = SampleFormat::Float32;
    }
    void writeInput(const std::vector<float>& samples, int channels)
    {
        writeAudio(job.input, samples, SampleFormat::Float32, kRate, channels);
    }
    std::vector<float> rendered()
    {
        report = render(plugin, job, [](double) {});
        return readAudio(job.output);
    }
    TemporaryFolder folder;
    FakePlugin plugin{kDelay, [](int channel, float x) { return channel == 1 ? -x : x; }};
    RenderJob job;
    RenderReport report;
};

TEST_F(Rendering, KeepsEverySampleAtItsPosition)
{
    const struct {
        int blockSize;
        bool keepLatency;
        double preRoll;  // seconds
    } rows[]{
        {1, false, 0.0}, {64, false, 0.0}, {512, false, 0.5}, {4096, false, 0.0}, {512, true, 0.0}};
    const std::vector<float> input = noise(1000, 1);
    std::vector<float> late(kDelay);
    late.insert(late.end(), input.begin(), input.end());
    writeInput(input, 1);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.blockSize);
        job.blockSize = row.blockSize;
        job.keepLatency = row.keepLatency;
        job.preRollSeconds = row.preRoll;
        plugin.blockSizes.clear();
        EXPECT_EQ(rendered(), row.keepLatency ? late : input);
        EXPECT_EQ(std::accumulate(plugin.blockSizes.begin(), plugin.blockSizes.end(), 0),
                  static_cast<int>(kRate * row.preRoll) + 1000 + kDelay);
        EXPECT_LE(*std::max_element(plugin.blockSizes.begin(), plugin.blockSizes.end()),
                  row.blockSize);
        EXPECT_EQ(report.outputFrames, row.keepLatency ? 1000 + kDelay : 1000);
    }
    EXPECT_EQ(report.latency, kDelay);
    EXPECT_EQ(plugin.rate, kRate);
}

TEST_F(Rendering, MakesStereoOfMonoAndKeepsChannelsSeparate)
{
    writeInput({0.5f, 0.25f, -0.125f}, 1);
    job.outputChannels = 2;
    EXPECT_EQ(rendered(), (std::vector<float>{0.5f, -0.5f, 0.25f, -0.25f, -0.125f, 0.125f}));
    writeInput({0.5f, 0.25f, -0.125f, 1.0f}, 2);
    EXPECT_EQ(rendered(), (std::vector<float>{0.5f, -0.25f, -0.125f, -1.0f}));
}

TEST_F(Rendering, ChangesParametersOnTheirExactSample)
{
    writeInput(std::vector<float>(1000, 1.0f), 1);
    job.blockSize = 256;
    job.settings = {{0, 0.5f}};
    // 100.4 samples round to 100, 699.6 to 700; a change after the end is never made.
    job.automation = {{0.0, {0, 0.25f}},
                      {100.4 / kRate, {0, 0.75f}},
                      {699.6 / kRate, {0, 0.125f}},
                      {700.0 / kRate, {0, 1.0f}},
                      {1e300, {0, 0.0f}}};
    const std::vector<float> output = rendered();
    for (std::size_t i = 0; i < output.size(); ++i)
        ASSERT_EQ(output[i], i < 100 ? 0.25f : i < 700 ? 0.75f : 1.0f) << "at sample " << i;
    EXPECT_EQ(report.before.peak, 1.0);
    EXPECT_EQ(report.after.peak, 1.0);
    EXPECT_NEAR(report.after.rms, std::sqrt(0.1 * 0.0625 + 0.6 * 0.5625 + 0.3), 1e-6);
}

TEST_F(Rendering, KeepsAnOutputWhenItFailsAndTheInputAlways)
{
    writeInput(noise(300, 1), 1);
    const std::string content = contentOf(job.input);
    std::filesystem::create_hard_link(job.input, folder / "link.wav");
    for (const char* same : {"in.wav", "link.wav", "../in.wav"}) {
        job.output = same[0] == '.' ? folder
                / ("../" + std::filesystem::path(folder / "").parent_path().filename().string()
                   + "/in.wav")
                                    : folder / same;
        EXPECT_NE(complaintOf([&] { rendered(); }).find("is the input itself"), std::string::npos);
    }
    EXPECT_EQ(contentOf(job.input), content);
    job.output = folder / "out.wav";
    writeContent(job.output, "old");
    writeContent(job.input, content.substr(0, 40));
    EXPECT_THROW(rendered(), ToolError);
    EXPECT_EQ(contentOf(job.output), "old");
    EXPECT_EQ(folder.count(), 3);
}

TEST_F(Rendering, ReachesTheLoudnessThatIsAskedForAndNeverPassesTheCeiling)
{
    // 1 kHz at -23 dBFS in both channels has -23 LUFS (EBU Tech 3341, case 1).
    std::vector<float> tone(2 * 4 * kRate);
    for (std::size_t i = 0; i < tone.size(); ++i)
        tone[i] = static_cast<float>(
            std::pow(10.0, -23.0 / 20.0)
            * std::sin(6.283185307179586 * 1000.0 / kRate * static_cast<double>(i / 2)));
    writeInput(tone, 2);
    job.settings = {{0, 0.5f}};
    job.measureLoudness = true;
    const struct {
        LevelGoal goal;
        double after;       // LUFS
        const char* notes;  // the start
    } rows[]{
        {{}, -29.02, ""},
        {{true, {}, {}}, -23.0, ""},
        {{false, -16.0, {}}, -16.0, ""},
        {{false, -16.0, -15.0}, -16.0, ""},
        {{false, -16.0, -20.0},
         -20.0,
         "the ceiling of -20.00 dBTP forbids -16.00 LUFS; the result"},
        {{true, {}, -30.0}, -30.0, "the ceiling of -30.00 dBTP forbids -2"},
        {{false, {}, -40.0}, -40.0, ""},
        {{false, {}, -3.0}, -29.02, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.after);
        job.goal = row.goal;
        rendered();
        EXPECT_NEAR(report.before.loudness->integrated, -23.0, 0.05);
        EXPECT_NEAR(report.before.loudness->shortTermMaximum, -23.0, 0.05);
        EXPECT_NEAR(20.0 * std::log10(report.before.loudness->truePeak), -23.0, 0.1);
        EXPECT_NEAR(report.before.loudness->range, 0.0, 0.05);
        EXPECT_NEAR(report.after.loudness->integrated, row.after, 0.05);
        EXPECT_EQ(report.gain.has_value(), row.goal.wanted());
        EXPECT_NEAR(report.gain.value_or(row.after + 29.02), row.after + 29.02, 0.06);
        EXPECT_EQ(report.notes.empty(), row.notes[0] == '\0');
        for (const std::string& note : report.notes)
            EXPECT_EQ(note.rfind(row.notes, 0), 0u) << note;
    }
    writeInput(std::vector<float>(kRate), 1);
    job.goal = {true, {}, {}};
    EXPECT_EQ(rendered(), std::vector<float>(kRate));
    EXPECT_EQ(report.notes.at(0).rfind("silent", 0), 0u);
    EXPECT_EQ(report.gain, 0.0);
    writeInput(std::vector<float>(kRate / 10, 0.5f), 1);
    job.goal = {true, {}, -20.0};
    rendered();
    EXPECT_EQ(report.notes.size(), 1u) << report.notes.back();
    EXPECT_FALSE(std::isfinite(report.after.loudness->shortTermMaximum)) << "of less than 3 s";
    // Played on two sides, as the result will be.
    job.goal = {true, {}, {}};
    job.settings = {{0, 1.0f}};
    job.outputChannels = 2;
    writeInput(noise(kRate, 1), 1);
    rendered();
    EXPECT_NEAR(*report.gain, 0.0, 0.01);
}

TEST_F(Rendering, KeepsCuesAtTheirPlaceInTheAudioAndForgetsTheLoudnessOfTheInput)
{
    FileMetadata metadata;
    metadata.cues = {SF_CUE_POINT{1, 0, 0x61746164, 0, 0, 200, ""}};
    SF_BROADCAST_INFO bext{};
    bext.version = 2;
    const auto fields = [&] {
        return std::vector<int>{bext.loudness_value, bext.loudness_range, bext.max_true_peak_level,
                                bext.max_momentary_loudness, bext.max_shortterm_loudness};
    };
    bext.loudness_value = bext.loudness_range = bext.max_true_peak_level =
        bext.max_momentary_loudness = bext.max_shortterm_loudness = -1400;
    metadata.broadcast.assign(reinterpret_cast<const char*>(&bext), sizeof(bext));
    writeAudio(job.input, noise(1000, 1), SampleFormat::Float32, kRate, 1, metadata);
    for (const bool keepLatency : {false, true}) {
        job.keepLatency = keepLatency;
        if (keepLatency) {
            // Version 1 of the chunk, without loudness; libsndfile writes version 2.
            std::string content = contentOf(job.input);
            content[content.find("bext") + 8 + 346] = 1;
            writeContent(job.input, content);
        }
        rendered();
        const FileMetadata written = AudioReader(job.output).metadata();
        EXPECT_EQ(written.cues.at(0).sample_offset, keepLatency ? 200u + kDelay : 200u);
        std::memcpy(&bext, written.broadcast.data(), sizeof(bext));
        EXPECT_EQ(fields(), std::vector<int>(5, 0x7FFF));
    }
}

TEST(Progress, EstimatesTheTimeLeft)
{
    EXPECT_EQ(timeLeft(0.9, 0.5), "");
    EXPECT_EQ(timeLeft(9.0, 0.0), "");
    EXPECT_EQ(timeLeft(30.0, 0.25), ", 1:30 left");
    EXPECT_EQ(timeLeft(45.0, 0.9), ", 0:05 left");
    EXPECT_EQ(timeLeft(1000.0, 0.2), ", 1:06:40 left");
}

TEST(LevelMeter, MeasuresTheRangeBetweenTwoLevels)
{
    // EBU Tech 3342, case 1: 20 s at -20 dBFS and 20 s at -30 dBFS have a range of 10 LU.
    LevelMeter meter(2, kRate, true);
    for (int i = 0; i < 40 * kRate; ++i) {
        const double level = i < 20 * kRate ? 0.1 : 0.1 / std::sqrt(10.0);
        const auto x = static_cast<float>(level * std::sin(6.283185307179586 * i / 48.0));
        const float frame[]{x, x};
        meter.add(frame, 1);
    }
    EXPECT_LT(meter.levels().loudness->truePeak, 0.11);
    const float click[]{0.5f, 0.0f};  // in an interval of its own
    meter.add(click, 1);
    EXPECT_GE(meter.levels().loudness->truePeak, 0.5);
    EXPECT_NEAR(meter.levels().loudness->range, 10.0, 0.3);
    EXPECT_NEAR(meter.levels().loudness->shortTermMaximum, -20.0, 0.1);
}

TEST(TruePeak, IsThatOfTheToneBetweenTheSamples)
{
    // Tones that swell to an amplitude of 0.5, with samples beside the crests.
    for (const auto& [rate, frequency, phase] : {std::tuple{44100, 11025.0, 0.25},
                                                 {48000, 997.0, 0.1},
                                                 {44100, 20000.0, 0.3},
                                                 {48000, 16000.0, 0.5},
                                                 {96000, 24000.0, 0.25},
                                                 {96000, 32000.0, 1.0 / 6.0}}) {
        LevelMeter meter(2, rate, true);
        for (int i = 0; i < rate; ++i) {
            const double angle = 3.14159265358979 * (2.0 * frequency / rate * i + phase);
            const double swell = std::sin(3.14159265358979 * i / rate);
            const auto left = static_cast<float>(0.5 * swell * std::sin(angle));
            const float frame[]{left, 0.1f * left};
            meter.add(frame, 1);
        }
        const double decibels = 20.0 * std::log10(meter.levels().loudness->truePeak);
        EXPECT_NEAR(decibels, -6.02, 0.03) << rate << " " << frequency;
    }
    // Two samples of 0.5 alone in silence: 0.5 * 4 / pi between them.
    std::vector<float> click(400);
    click[200] = click[201] = 0.5f;
    LevelMeter quiet(1, 48000, true);
    quiet.add(click.data(), 400);
    EXPECT_NEAR(quiet.levels().loudness->truePeak, 0.637, 0.003);
    LevelMeter high(1, 192000, true);
    const std::vector<float> samples = noise(192000, 1);
    high.add(samples.data(), 192000);
    EXPECT_EQ(high.levels().loudness->truePeak, high.levels().peak);
}

}  // namespace
