// The renderer with a mock plug-in: a delay, a gain set by its parameter, and an inverted right
// channel.
#include "tools/audio/Render.h"
#include "tests/support/Noise.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/tools/AudioContent.h"
#include "tests/tools/FakePlugin.h"
#include "tools/common/ToolError.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <numeric>

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
        Progress progress("test");
        report = render(plugin, job, progress);
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
    EXPECT_EQ(report.before.peak(), 1.0);
    EXPECT_EQ(report.after.peak(), 1.0);
    EXPECT_NEAR(report.after.rms(), std::sqrt(0.1 * 0.0625 + 0.6 * 0.5625 + 0.3), 1e-6);
}

TEST_F(Rendering, RendersOntoItsOwnInputAndKeepsItWhenItFails)
{
    const std::vector<float> input = noise(300, 1);
    writeInput(input, 1);
    job.output = job.input;
    EXPECT_EQ(rendered(), input);
    const std::string head = contentOf(job.input).substr(0, 40);
    writeContent(job.input, head);
    EXPECT_THROW(rendered(), ToolError);
    EXPECT_EQ(contentOf(job.input), head);
    EXPECT_EQ(folder.count(), 1);
}

}  // namespace
