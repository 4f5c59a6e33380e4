// The processor's rates, buses, block loop and channel modes.
#include "tests/shell/ProcessorProbe.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <random>

using namespace probe;

namespace {

constexpr auto kMono = SpeakerArr::kMono;
constexpr auto kStereo = SpeakerArr::kStereo;

std::vector<Signal> stereoNoise(std::size_t length)
{
    return {noise(length, 1), noise(length, 2)};
}

struct Layout {
    SpeakerArrangement in, out;
};
constexpr Layout kLayouts[] = {{kStereo, kStereo}, {kMono, kStereo}, {kMono, kMono}};

using Settings = std::vector<std::pair<ParamID, double>>;

std::vector<Signal> render(const Layout& layout, const Settings& settings)
{
    Processor processor;
    processor.arrange(layout.in, layout.out);
    for (const auto& [id, value] : settings)
        processor.set(id, value);
    std::vector<Signal> in = stereoNoise(600);
    in.resize(layout.in == kMono ? 1 : 2);
    return processor.render(in, {64}, layout.out == kMono ? 1 : 2);
}

}  // namespace

TEST(Rates, TheModeChangesAtExactly88200And176400)
{
    const struct {
        double rate;
        int mode;
        double stripRate;
        unsigned latency;
    } rows[] = {{44100, 2, 176400, 96}, {48000, 2, 192000, 96},  {88199, 2, 352796, 96},
                {88200, 1, 176400, 96}, {176399, 1, 352798, 96}, {176400, 0, 176400, 0},
                {192000, 0, 192000, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.rate);
        Processor processor(row.rate);
        EXPECT_EQ(processor.oversampleMode, row.mode);
        EXPECT_EQ(processor.oversampledRate, row.stripRate);
        EXPECT_EQ(processor.eqStripR2->sampleRate, row.stripRate);
        EXPECT_EQ(processor.preampStripL->sampleRate, row.stripRate);
        EXPECT_EQ(processor.getLatencySamples(), row.latency);
    }
}

TEST(Buses, AreAsRequestedWhereAcceptedAndStereoWhereRefused)
{
    Processor processor;
    const auto expectBus = [&](BusDirection direction, const std::string& name,
                               SpeakerArrangement arrangement) {
        BusInfo info;
        SpeakerArrangement found = 0;
        ASSERT_EQ(processor.getBusInfo(kAudio, direction, 0, info), kResultTrue);
        ASSERT_EQ(processor.getBusArrangement(direction, 0, found), kResultTrue);
        EXPECT_EQ(std::string(info.name, std::find(info.name, info.name + 128, 0)), name);
        EXPECT_EQ(found, arrangement) << name;
        EXPECT_TRUE(info.flags & BusInfo::kDefaultActive) << name;
    };
    expectBus(kInput, "Stereo In", kStereo);
    expectBus(kOutput, "Stereo Out", kStereo);
    processor.terminate();
    EXPECT_EQ(processor.initialize(processor.unknownCast()), kResultOk);
    EXPECT_EQ(processor.initialize(processor.unknownCast()), kResultFalse);
    EXPECT_EQ(processor.getBusCount(kAudio, kInput), 1);
    const SpeakerArrangement centre = kSpeakerC, sides = SpeakerArr::kStereoSide;
    const struct {
        SpeakerArrangement in, out;
        bool accepted;
        const char *inName, *outName;
    } rows[] = {{kMono, kMono, true, "Mono In", "Mono Out"},
                {kStereo, kMono, false, "Stereo In", "Stereo Out"},
                {kMono, kStereo, true, "Mono In", "Stereo Out"},
                {kStereo, SpeakerArr::k30Cine, false, "Stereo In", "Stereo Out"},
                {centre, sides, true, "Mono In", "Stereo Out"},
                {SpeakerArr::kEmpty, kStereo, false, "Stereo In", "Stereo Out"}};
    SpeakerArrangement two[] = {kMono, kMono};
    EXPECT_EQ(processor.setBusArrangements(two, 1, two, 2), kResultFalse);
    expectBus(kInput, "Stereo In", kStereo);
    for (const auto& row : rows) {
        EXPECT_EQ(processor.arrange(row.in, row.out), row.accepted);
        expectBus(kInput, row.inName, row.accepted ? row.in : kStereo);
        expectBus(kOutput, row.outName, row.accepted ? row.out : kStereo);
    }
}

TEST(Blocks, AnyBlockLengthsGiveTheSameBits)
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
    EXPECT_EQ(processor.reports.getParameterCount(), 1) << "the latency is reported all the same";

    // Nor does a block that lacks the input or the output buses.
    AudioBusBuffers bus;
    ProcessData data;
    data.numSamples = 4;
    for (const bool output : {false, true}) {
        data.numInputs = !output;
        data.numOutputs = output;
        (output ? data.outputs : data.inputs) = &bus;
        EXPECT_EQ(processor.process(data), kResultOk);
        (output ? data.outputs : data.inputs) = nullptr;
    }
}

TEST(Blocks, InputAndOutputMayBeTheSameMemoryAlsoCrosswise)
{
    for (const bool licensed : {true, false})
        for (const std::size_t left : {std::size_t{0}, std::size_t{1}}) {  // where it goes
            std::vector<Signal> apart = stereoNoise(100), same = apart;
            Processor wanted, inPlace;
            wanted.licensed = inPlace.licensed = licensed;
            inPlace.run({same[0].data(), same[1].data()},
                        {same[left].data(), same[1 - left].data()}, 100);
            if (left == 1)
                std::swap(same[0], same[1]);
            EXPECT_EQ(same, wanted.block(apart, 2));
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
        EXPECT_EQ(processor.setProcessing(state), kNotImplemented);
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

TEST(Channels, SelectionTakesTheNearestPositionAndStereoBeyondTheLast)
{
    const struct {
        double position, same;
    } rows[] = {{0.124, 0.0}, {0.125, 0.25}, {0.374, 0.25}, {0.625, 0.75}, {0.875, 1.0},
                {1.124, 1.0}, {1.125, 0.5},  {3.0, 0.5},    {-0.3, 0.0},   {-1.0, 0.5}};
    for (const Layout& layout : kLayouts)
        for (const auto& row : rows)
            EXPECT_EQ(render(layout, {{kChannel, row.position}}),
                      render(layout, {{kChannel, row.same}}))
                << row.position;
}

// Mono gives the output of stereo with the same signal in both channels.
TEST(Channels, MonoEqualsStereoWithTwoEqualChannels)
{
    const Signal in = noise(600, 4);
    for (const double power : {0.0, 1.0})
        for (const double channel : {0.0, 0.25, 0.5, 0.75, 1.0}) {
            SCOPED_TRACE(testing::Message() << "Channel " << channel << ", power " << power);
            Processor mono, widened, stereo;
            mono.arrange(kMono, kMono);
            widened.arrange(kMono, kStereo);
            for (Processor* processor : {&mono, &widened, &stereo}) {
                processor->set(kPower, power);
                processor->set(kChannel, channel);
                for (const ParamID id : {kMS, kQB11, kDriveL, kDriveR, kLFreqL, kLFreqR})
                    processor->set(id, 0.75);
            }
            const Signal wanted = mono.render({in}, {64}, 1)[0];
            for (const std::vector<Signal>& out :
                 {stereo.render({in, in}, {64}), widened.render({in}, {64})})
                for (const Signal& heard : out)
                    for (std::size_t i = 0; i < in.size(); ++i)
                        ASSERT_NEAR(heard[i], wanted[i], 1e-6f) << i;
        }
}

// Filters, glides and switches follow every change of rate, buses, block length and parameters,
// also one that comes while others are under way.
TEST(Transitions, AfterSilenceAnInstanceSoundsAsAFreshOne)
{
    std::mt19937 random(3);
    const auto below = [&](unsigned count) { return static_cast<unsigned>(random() % count); };
    std::array<double, kPresetParamCount> values{};
    Processor walked;
    for (int round = 0; round < 24; ++round) {
        const double rate = std::array{44100, 48000, 88200, 96000, 176400, 192000}[below(6)];
        const Layout layout = kLayouts[below(3)];
        const auto setUp = [&](Processor& processor) {
            processor.setActive(false);
            processor.arrange(layout.in, layout.out);
            ProcessSetup setup{kRealtime, kSample32, 4096, rate};
            processor.setupProcessing(setup);
            processor.setActive(true);
        };
        const auto play = [&](Processor& processor, std::vector<Signal> in, int block) {
            in.resize(layout.in == kMono ? 1 : 2);
            return processor.render(in, {block}, layout.out == kMono ? 1 : 2);
        };
        setUp(walked);
        for (int change = 0; change < 80; ++change) {
            const ParamID id =
                round == 0 && change < 58 ? static_cast<ParamID>(change) : below(kPresetParamCount);
            walked.set(id, values[id] = below(1000) / 999.0);
            if (change % 8 == 7)
                play(walked, stereoNoise(1 + below(400)), 1 + static_cast<int>(below(100)));
        }
        // The left and right parameters of these set one switch: the last change counts.
        for (const ParamID id : {kTrfoDsL, kTrfoDsR, kAmpDsbL, kAmpDsbR})
            walked.set(id, values[id] = below(2));
        for (const ParamID id : {kPower, kBpsCh1, kBpsCh2})
            walked.set(id, values[id] = id == kPower);
        Processor fresh;
        setUp(fresh);
        for (ParamID id = 0; id < kPresetParamCount; ++id)
            fresh.set(id, values[id]);
        const std::vector<Signal> silence(2, Signal(static_cast<std::size_t>(rate)));
        play(walked, silence, 512);
        play(fresh, silence, 512);
        const auto got = play(walked, stereoNoise(2000), 100);
        const auto wanted = play(fresh, stereoNoise(2000), 512);
        for (std::size_t c = 0; c < wanted.size(); ++c) {
            const auto [low, high] = std::minmax_element(wanted[c].begin(), wanted[c].end());
            for (std::size_t i = 0; i < wanted[c].size(); ++i)
                ASSERT_NEAR(got[c][i], wanted[c][i], 1e-5f * (*high - *low) + 1e-9f)
                    << "sample " << i << " of round " << round << ", at " << rate << " Hz";
        }
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
