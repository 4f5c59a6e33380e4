// The processor's rates, buses, block loop and what a listener hears of them.
#include "ProcessorProbe.h"

#include <gtest/gtest.h>

#include <limits>

using namespace probe;

namespace {

constexpr auto kMono = SpeakerArr::kMono;
constexpr auto kStereo = SpeakerArr::kStereo;

std::vector<Signal> stereoNoise(std::size_t length)
{
    return {noise(length, 1), noise(length, 2)};
}

}  // namespace

TEST(Rates, TheModeChangesAtExactly88200And176400)
{
    struct Row {
        double rate;
        int mode;
        double stripRate;
        unsigned latency;
        float latencyMs;
    };
    // 96 / 44100 s is 2.1769 ms, 96 / 48000 s is 2 ms.
    for (const Row& row :
         {Row{44100, 2, 176400, 96, 2.176871f}, Row{48000, 2, 192000, 96, 2.0f},
          Row{87999, 2, 351996, 96, 1.090922f}, Row{88200, 1, 176400, 96, 1.088435f},
          Row{176399, 1, 352798, 96, 0.544221f}, Row{176400, 0, 176400, 0, 0.0f},
          Row{192000, 0, 192000, 0, 0.0f}}) {
        SCOPED_TRACE(row.rate);
        Processor processor(row.rate);
        EXPECT_EQ(processor.oversampleMode, row.mode);
        EXPECT_EQ(processor.oversampledRate, row.stripRate);
        EXPECT_EQ(processor.eqStripR2->sampleRate, row.stripRate);
        EXPECT_EQ(processor.preampStripL->sampleRate, row.stripRate);
        EXPECT_EQ(processor.getLatencySamples(), row.latency);
        EXPECT_NEAR(processor.latencyMs, row.latencyMs, 1e-6f);
    }
}

TEST(Buses, AcceptedAndRefusedArrangementsLeaveTheBusesTheyShould)
{
    struct Row {
        SpeakerArrangement in, out;
        bool accepted;
        const char *inName, *outName;
    };
    Processor processor;
    for (const Row& row :
         {Row{kMono, kMono, true, "Mono In", "Mono Out"},
          Row{kStereo, kMono, false, "Stereo In", "Stereo Out"},
          Row{kMono, kStereo, true, "Mono In", "Stereo Out"},
          Row{kStereo, SpeakerArr::k30Cine, false, "Stereo In", "Stereo Out"},
          Row{SpeakerArr::kEmpty, SpeakerArr::kEmpty, false, "Stereo In", "Stereo Out"},
          Row{kStereo, kStereo, true, "Stereo In", "Stereo Out"}}) {
        SCOPED_TRACE(std::string(row.inName) + "/" + row.outName);
        EXPECT_EQ(processor.arrange(row.in, row.out), row.accepted);
        for (const BusDirection direction : {kInput, kOutput}) {
            BusInfo info;
            ASSERT_EQ(processor.getBusCount(kAudio, direction), 1);
            ASSERT_EQ(processor.getBusInfo(kAudio, direction, 0, info), kResultTrue);
            const std::string wanted = direction == kInput ? row.inName : row.outName;
            EXPECT_TRUE(std::equal(wanted.begin(), wanted.end(), info.name));
            EXPECT_EQ(info.channelCount, wanted[0] == 'M' ? 1 : 2);
        }
    }
    ASSERT_TRUE(processor.arrange(kMono, kStereo));
    SpeakerArrangement two[2] = {kStereo, kStereo};
    EXPECT_EQ(processor.setBusArrangements(two, 2, two, 1), kResultFalse);
    SpeakerArrangement kept = 0;
    processor.getBusArrangement(kInput, 0, kept);
    EXPECT_EQ(kept, kMono) << "another number of buses changes nothing";
}

TEST(Blocks, AnyCuttingOfTheStreamGivesTheSameBits)
{
    const std::vector<Signal> in = stereoNoise(5000);
    for (const double rate : {48000.0, 96000.0, 192000.0}) {
        for (const bool midSide : {false, true}) {
            SCOPED_TRACE(rate);
            const auto render = [&](const std::vector<int>& lengths) {
                Processor processor(rate);
                processor.set(kMS, midSide);
                processor.set(kQB11, 1.0);
                processor.set(kDriveL, 0.7);
                processor.set(k2x, 1.0);
                processor.set(kLFreqL, 6.0 / 9);
                processor.set(kLGainL, 0.8);
                processor.set(kMFreqR2, 4.0 / 9);
                processor.set(kMGainR2, 0.2);
                return processor.render(in, lengths);
            };
            const std::vector<Signal> whole = render({4096});
            for (const std::vector<int>& lengths : std::vector<std::vector<int>>{
                     {1}, {7}, {16}, {17}, {64}, {5000}, {3, 0, 900, 15, 33, 1, 250}})
                EXPECT_EQ(render(lengths), whole) << "first length " << lengths[0];
        }
    }
}

TEST(Blocks, AnEmptyBlockTakesParametersAndTouchesNoSample)
{
    Processor processor;
    processor.set(kPower, 0.0);
    float guard[2] = {-7.0f, -7.0f};
    processor.run({guard, guard}, {guard, guard + 1}, 0);
    EXPECT_EQ(processor.powerOn, 0);
    EXPECT_EQ(guard[0], -7.0f);
    EXPECT_EQ(processor.reports.getParameterCount(), 1) << "the latency goes out all the same";

    processor.set(kPower, 1.0);
    ProcessData noBuses;
    noBuses.inputParameterChanges = &processor.changes;
    noBuses.outputParameterChanges = &processor.reports;
    processor.reports.clearQueue();
    EXPECT_EQ(processor.process(noBuses), kResultOk);
    EXPECT_EQ(processor.powerOn, 1);
    EXPECT_EQ(processor.reports.getParameterCount(), 0) << "without buses nothing is reported";
}

TEST(Blocks, InputAndOutputMayBeTheSameMemoryAlsoCrosswise)
{
    for (const bool licensed : {true, false}) {
        std::vector<Signal> in = stereoNoise(100);
        Processor apart, inPlace, crosswise;
        for (Processor* processor : {&apart, &inPlace, &crosswise})
            processor->licensed = licensed;
        std::vector<Signal> input = in;
        const std::vector<Signal> wanted = apart.block(input, 2);

        std::vector<Signal> same = in;
        inPlace.run({same[0].data(), same[1].data()}, {same[0].data(), same[1].data()}, 100);
        EXPECT_EQ(same, wanted);

        std::vector<Signal> crossed = in;
        crosswise.run({crossed[0].data(), crossed[1].data()},
                      {crossed[1].data(), crossed[0].data()}, 100);
        EXPECT_EQ(crossed[1], wanted[0]);
        EXPECT_EQ(crossed[0], wanted[1]);
    }
}

TEST(Blocks, ActivationAlsoWithFalseStartsFromSilence)
{
    const std::vector<Signal> in = stereoNoise(400);
    for (const bool state : {true, false}) {
        Processor processor;
        processor.set(kPower, 0.0);
        const std::vector<Signal> first = processor.render(in, {400});
        processor.setActive(state);
        EXPECT_EQ(processor.render(in, {400}), first);
    }
}

TEST(Blocks, ASampleThatIsNotFiniteCountsAsSilence)
{
    for (const float bad :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
          -std::numeric_limits<float>::infinity()}) {
        std::vector<Signal> poisoned = stereoNoise(3000), clean = poisoned;
        poisoned[0][100] = bad;
        clean[0][100] = 0.0f;
        Processor a, b;
        EXPECT_EQ(a.render(poisoned, {64}), b.render(clean, {64}));
    }
}

// The signal paths below are told apart with `Power` off or by comparing whole renders, so that
// the strips' colour does not matter.
TEST(Channels, SelectionPicksSumsAndDifferencesWithoutScaling)
{
    const std::vector<Signal> in = stereoNoise(600);
    const auto render = [&](double channel, bool power) {
        Processor processor;
        processor.set(kChannel, channel);
        processor.set(kPower, power);
        return processor.render(in, {64});
    };
    const std::vector<Signal> stereo = render(0.5, true);
    const auto expectPair = [&](double channel, float l, float r) {
        SCOPED_TRACE(channel);
        const std::vector<Signal> out = render(channel, true);
        EXPECT_EQ(out[0], out[1]);
        for (std::size_t i = 0; i < in[0].size(); ++i)
            ASSERT_NEAR(out[0][i], l * stereo[0][i] + r * stereo[1][i], 1e-6f) << i;
    };
    expectPair(0.0, 1, 1);    // Middle
    expectPair(0.125, 1, 0);  // 0.125 x 4 + 0.5 is 1: Left
    expectPair(0.75, 0, 1);   // Right
    expectPair(1.0, 1, -1);   // Side
    EXPECT_EQ(render(1.0, false), render(0.5, false)) << "Power off ignores the selection";
}

TEST(Channels, MonoHearsMiddleTwiceAndNothingOfTheSide)
{
    const std::vector<Signal> in = {noise(600, 3)};
    const auto render = [&](double channel, double power) {
        Processor processor;
        processor.arrange(kMono, kMono);
        processor.set(kChannel, channel);
        processor.set(kPower, power);
        return processor.render(in, {64}, 1)[0];
    };
    const Signal normal = render(0.5, 1.0);
    const Signal middle = render(0.0, 1.0);
    for (std::size_t i = 0; i < normal.size(); ++i)
        ASSERT_EQ(middle[i], 2.0f * normal[i]);
    EXPECT_EQ(render(1.0, 1.0), Signal(600, 0.0f));
    EXPECT_EQ(render(1.0, 0.0), render(0.5, 0.0));
    EXPECT_EQ(render(0.25, 1.0), normal);
}

TEST(Channels, MonoEqualsEitherChannelOfAnEqualStereoSignal)
{
    const Signal in = noise(2000, 4, 0.9f);
    for (const double midSide : {0.0, 1.0}) {
        SCOPED_TRACE(midSide);
        const auto prepare = [&](Processor& processor) {
            processor.set(kMS, midSide);
            for (const ParamID id : {kQB11, kLShelfL, kLShelfR})
                processor.set(id, 1.0);
            for (const ParamID id : {kDriveL, kDriveR, kLGainL, kLGainR})
                processor.set(id, 0.75);
            for (const ParamID id : {kLFreqL, kLFreqR})
                processor.set(id, 6.0 / 9);
        };
        Processor mono, stereo, widened;
        mono.arrange(kMono, kMono);
        widened.arrange(kMono, kStereo);
        for (Processor* processor : {&mono, &stereo, &widened})
            prepare(*processor);
        const Signal wanted = mono.render({in}, {64}, 1)[0];
        for (const std::vector<Signal>& out :
             {stereo.render({in, in}, {64}), widened.render({in}, {64}, 2)})
            for (const Signal& channel : out)
                for (std::size_t i = 0; i < in.size(); ++i)
                    ASSERT_NEAR(channel[i], wanted[i], 1e-6f) << i;
    }
}

TEST(Channels, BypassTakesOneChannelsStripsOutAndInMidSideTheMidOrSide)
{
    const std::vector<Signal> in = stereoNoise(1500);
    const auto render = [&](std::vector<std::pair<ParamID, double>> settings) {
        Processor processor;
        for (const auto& [id, value] : settings)
            processor.set(id, value);
        return processor.render(in, {64});
    };
    const std::vector<Signal> dry = render({{kPower, 0.0}});
    const std::vector<Signal> wet = render({});
    const std::vector<Signal> leftOut = render({{kBpsCh1, 0.5}});
    EXPECT_EQ(leftOut[0], dry[0]) << "exactly 0.5 turns the channel off";
    EXPECT_EQ(leftOut[1], wet[1]);
    const std::vector<Signal> rightOut = render({{kBpsCh2, 1.0}});
    EXPECT_EQ(rightOut[0], wet[0]);
    EXPECT_EQ(rightOut[1], dry[1]);

    const std::vector<Signal> midOut = render({{kMS, 1.0}, {kBpsCh1, 1.0}});
    const std::vector<Signal> midSide = render({{kMS, 1.0}});
    for (std::size_t i = 0; i < in[0].size(); ++i) {
        ASSERT_NEAR(midOut[0][i] + midOut[1][i], dry[0][i] + dry[1][i], 1e-6);
        ASSERT_NEAR(midOut[0][i] - midOut[1][i], midSide[0][i] - midSide[1][i], 1e-6);
    }
}

TEST(Licence, ThePassPathLeavesTheSoundUntouchedAndUndelayed)
{
    std::vector<Signal> in = stereoNoise(100);
    Processor processor;
    processor.licensed = false;
    processor.set(kChannel, 0.0);
    EXPECT_EQ(processor.block(in, 2), in);
    processor.arrange(kMono, kStereo);
    std::vector<Signal> mono = {in[0]};
    EXPECT_EQ(processor.block(mono, 2), (std::vector<Signal>{in[0], in[0]}));
    processor.arrange(kMono, kMono);
    EXPECT_EQ(processor.block(mono, 1), mono);
}
