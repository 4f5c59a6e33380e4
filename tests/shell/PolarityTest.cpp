// Polarity flips at the quietest sample that can be found: in the whole block outside Mid/Side
// operation, in the sub-block otherwise.
#include "ProcessorProbe.h"

#include <gtest/gtest.h>

using namespace probe;

namespace {

// Loud but for one sample of each channel.
std::vector<Signal> withQuietSamples(std::size_t length, std::size_t left, std::size_t right)
{
    std::vector<Signal> in(2, Signal(length, 0.5f));
    in[0][left] = 0.01f;
    in[1][right] = 0.01f;
    return in;
}

// The index from which a host buffer is inverted; its length if nowhere.
std::size_t flipOf(const Signal& signal)
{
    std::size_t i = 0;
    while (i < signal.size() && signal[i] > 0.0f)
        ++i;
    for (std::size_t k = i; k < signal.size(); ++k)
        EXPECT_LT(signal[k], 0.0f) << "flipped back at " << k;
    return i;
}

}  // namespace

TEST(BlockPolarity, ALongBlockFlipsTheHostsBufferAtItsQuietestSample)
{
    Processor processor;
    processor.set(kQB11, 1.0);
    processor.set(kPhaseL, 1.0);
    std::vector<Signal> in = withQuietSamples(17, 11, 3);
    processor.block(in, 2);
    EXPECT_EQ(flipOf(in[0]), 11u);
    EXPECT_EQ(flipOf(in[1]), 17u) << "the other channel keeps its polarity";
    EXPECT_EQ(processor.phaseDoneForBlock, 1);

    in = withQuietSamples(200, 150, 3);
    processor.block(in, 2);
    EXPECT_EQ(flipOf(in[0]), 0u) << "from now on the whole block is inverted";
}

TEST(BlockPolarity, TwoPendingChannelsFlipTogetherWhereTheirSumIsLeast)
{
    Processor processor;
    processor.set(kQB11, 1.0);
    processor.set(kPhaseL, 1.0);
    processor.set(kPhaseR, 1.0);
    std::vector<Signal> in = withQuietSamples(300, 200, 40);
    in[0][77] = in[1][77] = 0.2f;  // 0.4 in sum, against 0.51 at 40 and 200
    processor.block(in, 2);
    EXPECT_EQ(flipOf(in[0]), 77u);
    EXPECT_EQ(flipOf(in[1]), 77u);
    EXPECT_EQ(processor.preampStripL->phaseChangePending, 0);
    EXPECT_EQ(processor.preampStripR->phaseChangePending, 0);
}

TEST(BlockPolarity, NothingFlipsWithoutPowerPreampOrChannel)
{
    for (const auto& [id, value] :
         {std::pair<ParamID, double>{kPower, 0.0}, {kQB11, 0.0}, {kBpsCh1, 1.0}}) {
        SCOPED_TRACE(id);
        Processor processor;
        processor.set(kQB11, 1.0);
        processor.set(kPhaseL, 1.0);
        processor.set(id, value);
        std::vector<Signal> in = withQuietSamples(64, 20, 20);
        processor.block(in, 2);
        EXPECT_EQ(flipOf(in[0]), 64u);
        EXPECT_EQ(processor.preampStripL->phaseChangePending, 1) << "the change waits";
    }
}

TEST(BlockPolarity, AMonoInputFlipsOnceAndTheRightStripWaits)
{
    for (const SpeakerArrangement out : {SpeakerArr::kMono, SpeakerArr::kStereo}) {
        Processor processor;
        processor.arrange(SpeakerArr::kMono, out);
        processor.set(kQB11, 1.0);
        processor.set(kPhaseL, 1.0);
        processor.set(kPhaseR, 1.0);
        std::vector<Signal> in = {withQuietSamples(64, 20, 20)[0]};
        processor.block(in, out == SpeakerArr::kMono ? 1 : 2);
        EXPECT_EQ(flipOf(in[0]), 20u);
        EXPECT_EQ(processor.preampStripR->phaseChangePending, 1);
    }
}

// In a block of up to 16 samples, or in Mid/Side operation, the host's buffer stays as it is and
// the sound flips inside.
TEST(SubBlockPolarity, ShortBlocksAndMidSideFlipInsideAndLeaveTheHostsBufferAlone)
{
    const std::vector<Signal> in = {noise(4000, 5), noise(4000, 6)};
    for (const int length : {16, 5, 512}) {
        const bool midSide = length > 16;
        SCOPED_TRACE(length);
        Processor straight, flipped;
        for (Processor* processor : {&straight, &flipped}) {
            processor->set(kMS, midSide);
            processor->set(kQB11, 1.0);
            // What is not symmetrical about zero would hide the sign.
            processor->set(kAmpDsbL, 1.0);
        }
        flipped.set(kPhaseL, 1.0);
        flipped.set(kPhaseR, 1.0);
        std::vector<Signal> first(2, Signal(static_cast<std::size_t>(length), 0.25f));
        const std::vector<Signal> before = first;
        flipped.block(first, 2);
        EXPECT_EQ(first, before);
        EXPECT_EQ(flipped.phaseDoneForBlock, 0);
        EXPECT_EQ(flipped.preampStripL->inverted, 1);
        EXPECT_EQ(flipped.preampStripR->inverted, 1);
        straight.block(first, 2);

        const std::vector<Signal> a = straight.render(in, {length}),
                                  b = flipped.render(in, {length});
        // By then the filters have forgotten the start, but for the 5 Hz high-pass.
        for (std::size_t i = 3000; i < 4000; ++i)
            ASSERT_NEAR(a[0][i], -b[0][i], 0.02f) << i;
    }
}
