// Polarity flips at the quietest sample: of the whole block, in the host's own buffer, outside
// Mid/Side operation; of the sub-block otherwise.
#include "tests/shell/ProcessorProbe.h"

#include <gtest/gtest.h>

using namespace probe;

namespace {

// At 192 kHz nothing is oversampled, and without equaliser strips and at 0 dB the pre-amplifier
// leaves the samples unchanged, so that only the polarity affects the output.
struct Bare : Processor {
    Bare() : Processor(192000.0)
    {
        for (auto* strip : {&eqStripL, &eqStripR, &eqStripL2, &eqStripR2})
            strip->reset();
        set(kQB11, 1.0);
        flush();
    }
};

// The index from which the signal is inverted; its length if nowhere.
std::ptrdiff_t flipOf(const Signal& before, const Signal& after)
{
    const auto flip =
        std::mismatch(before.begin(), before.end(), after.begin()).first - before.begin();
    for (auto i = static_cast<std::size_t>(flip); i < before.size(); ++i)
        EXPECT_EQ(after[i], -before[i]) << i;
    return flip;
}

// Converts left and right to mid and side (factor 0.5) and back (factor 1).
std::vector<Signal> sumAndDifference(const std::vector<Signal>& x, float factor)
{
    std::vector<Signal> y = x;
    for (std::size_t i = 0; i < x[0].size(); ++i) {
        y[0][i] = factor * (x[0][i] + x[1][i]);
        y[1][i] = factor * (x[0][i] - x[1][i]);
    }
    return y;
}

}  // namespace

TEST(Polarity, FlipsAtTheQuietestSampleOfOneChannelOrOfTheSumOfBoth)
{
    enum { kRight = 3, kBoth = 7, kLeft = 11, kNever = 99 };
    using Settings = std::vector<std::pair<ParamID, double>>;
    const struct {
        const char* name;
        Settings settings;  // each applied in a block of its own
        int left, right;
        int waitLeft, waitRight;
    } rows[] = {
        {"nothing asked", {}, kNever, kNever, 0, 0},
        {"left", {{kPhaseL, 1.0}}, kLeft, kNever, 0, 0},
        {"right", {{kPhaseR, 1.0}}, kNever, kRight, 0, 0},
        {"both", {{kPhaseL, 1.0}, {kPhaseR, 1.0}}, kBoth, kBoth, 0, 0},
        {"left bypassed", {{kPhaseL, 1.0}, {kPhaseR, 1.0}, {kBpsCh1, 1.0}}, kNever, kRight, 1, 0},
        {"right bypassed", {{kPhaseL, 1.0}, {kPhaseR, 1.0}, {kBpsCh2, 1.0}}, kLeft, kNever, 0, 1},
        {"no power", {{kPhaseL, 1.0}, {kPhaseR, 1.0}, {kPower, 0.0}}, kNever, kNever, 1, 1},
        {"no pre-amplifier", {{kPhaseL, 1.0}, {kPhaseR, 1.0}, {kQB11, 0.0}}, kNever, kNever, 1, 1},
        {"left taken back", {{kPhaseL, 1.0}, {kPhaseR, 1.0}, {kPhaseL, 0.0}}, kNever, kRight, 0, 0},
    };
    for (const auto& row : rows)
        for (const bool midSide : {false, true})
            for (const std::size_t length : {std::size_t{16}, std::size_t{17}}) {
                SCOPED_TRACE(testing::Message()
                             << row.name << ", " << length << " samples, M/S " << midSide);
                Bare processor;
                processor.set(kMS, midSide);
                for (const auto& [id, value] : row.settings) {
                    processor.set(id, value);
                    processor.flush();
                }
                std::vector<Signal> strips(2, Signal(length, 0.5f));
                for (const std::size_t next : {0u, 1u}) {  // of two equal samples the first counts
                    strips[0][kLeft + next] = strips[1][kRight + next] = 0.125f;
                    strips[0][kBoth + next] = strips[1][kBoth + next] = 0.25f;
                }
                // The second block is constant and must not flip again.
                for (const bool first : {true, false}) {
                    const auto n = static_cast<std::ptrdiff_t>(strips[0].size());
                    const auto in = midSide ? sumAndDifference(strips, 0.5f) : strips;
                    std::vector<Signal> host = in;
                    std::vector<Signal> out = processor.block(host, 2);
                    if (midSide)
                        out = sumAndDifference(out, 1.0f);
                    const auto expected = [&](std::ptrdiff_t flip) {
                        return flip == kNever ? n : first ? flip : 0;
                    };
                    EXPECT_EQ(flipOf(strips[0], out[0]), expected(row.left));
                    EXPECT_EQ(flipOf(strips[1], out[1]), expected(row.right));
                    EXPECT_EQ(host, !midSide && n > 16 ? out : in) << "the host's buffer";
                    strips.assign(2, Signal(5, 0.5f));
                }
                EXPECT_EQ(processor.preampStripL->phaseChangePending, row.waitLeft);
                EXPECT_EQ(processor.preampStripR->phaseChangePending, row.waitRight);
            }
}

TEST(Polarity, ChannelsThatExchangeTheirPolarityFlipAtTheSameSample)
{
    for (const std::size_t length : {std::size_t{16}, std::size_t{17}}) {
        Bare processor;
        std::vector<Signal> in(2, Signal(length, 0.5f));
        processor.set(kPhaseL, 1.0);
        processor.block(in, 2);
        processor.set(kPhaseL, 0.0);
        processor.set(kPhaseR, 1.0);
        in.assign(2, Signal(length, 0.5f));
        in[0][11] = in[1][11] = 0.125f;
        const Signal before = in[1];
        const std::vector<Signal> out = processor.block(in, 2);
        EXPECT_EQ(flipOf(before, out[1]), 11) << length;
        EXPECT_EQ(flipOf(out[1], out[0]), 0) << length;
    }
}

// With a mono input the host's buffer is inverted once and the right strip's change stays pending;
// with a stereo output and sub-blocks, both channels flip together.
TEST(Polarity, FlipsAMonoInputOnce)
{
    for (const std::size_t out : {std::size_t{1}, std::size_t{2}})
        for (const std::size_t length : {std::size_t{16}, std::size_t{17}}) {
            SCOPED_TRACE(testing::Message() << "to " << out << ", " << length << " samples");
            Bare processor;
            processor.arrange(SpeakerArr::kMono,
                              out == 1 ? SpeakerArr::kMono : SpeakerArr::kStereo);
            processor.set(kPhaseL, 1.0);
            processor.set(kPhaseR, 1.0);
            std::vector<Signal> in = {Signal(length, 0.5f)};
            in[0][11] = 0.125f;
            const Signal before = in[0];
            for (const Signal& channel : processor.block(in, out))
                EXPECT_EQ(flipOf(before, channel), 11);
            EXPECT_EQ(flipOf(before, in[0]), length > 16 ? 11 : 16);
            EXPECT_EQ(processor.preampStripR->phaseChangePending, out == 1 || length > 16 ? 1 : 0);
        }
}
