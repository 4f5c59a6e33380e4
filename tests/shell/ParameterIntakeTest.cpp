// How parameter changes reach switches and strips, and how the latency is reported.
#include "ProcessorProbe.h"

#include <gtest/gtest.h>

using namespace probe;

namespace {

void emptyBlock(Processor& processor)
{
    float nothing = 0.0f;
    processor.run({&nothing, &nothing}, {&nothing, &nothing}, 0);
}

}  // namespace

TEST(Intake, OnlyTheLastPointOfABlockCountsWhateverItsOffset)
{
    Processor processor;
    processor.set(kChannel, 0.0, 10);
    processor.set(kChannel, 1.0, 20);
    processor.set(kChannel, 0.25, 100);
    emptyBlock(processor);
    EXPECT_EQ(processor.channelMode, 1);

    int32 index = 0;
    processor.changes.addParameterData(kChannel, index);  // a queue without points
    processor.set(58, 1.0);
    processor.set(1000, 1.0);
    processor.set(kLatency, 1.0);
    emptyBlock(processor);
    EXPECT_EQ(processor.channelMode, 1);
}

TEST(Intake, SwitchesTurnOnAtExactlyOneHalf)
{
    Processor processor;
    processor.set(kPower, 0.49999);
    processor.set(kBpsCh1, 0.5);
    processor.set(kBpsCh2, 0.49999);
    emptyBlock(processor);
    EXPECT_EQ(processor.powerOn, 0);
    EXPECT_EQ(processor.channel1Active, 0);
    EXPECT_EQ(processor.channel2Active, 1);
    processor.set(kPower, 0.5);
    emptyBlock(processor);
    EXPECT_EQ(processor.powerOn, 1);
}

TEST(Intake, EveryStripParameterReachesItsOwnStripAndNoOther)
{
    // High gain up by 4 dB: 0.625 x 32 - 16 = 4.
    struct Row {
        ParameterId gain, frequency;
        std::unique_ptr<StripProcessorT46> Processor::*strip;
    };
    const Row rows[] = {{kHGainL, kHFreqL, &Processor::eqStripL},
                        {kHGainR, kHFreqR, &Processor::eqStripR},
                        {kHGainL2, kHFreqL2, &Processor::eqStripL2},
                        {kHGainR2, kHFreqR2, &Processor::eqStripR2}};
    for (const Row& target : rows) {
        Processor processor;
        processor.set(target.gain, 0.625);
        processor.set(target.frequency, 1.0);
        emptyBlock(processor);
        for (const Row& row : rows) {
            const StripProcessorT46& strip = *(processor.*row.strip);
            const bool isTarget = row.gain == target.gain;
            EXPECT_EQ(strip.highGainDb, isTarget ? 4.0 : 0.0);
            EXPECT_EQ(strip.highOn, isTarget ? 1 : 0);
            EXPECT_EQ(strip.highFrequency, isTarget ? 6800.0 : 1000.0);
        }
    }
}

TEST(Intake, EveryParameterOfAStripGoesToItsOwnSetter)
{
    Processor processor;
    processor.set(kProcR, 0.0);
    processor.set(kLShelfR, 1.0);
    processor.set(kLFreqR, 7.0 / 9);  // 82 Hz
    processor.set(kLGainR, 0.75);     // +8 dB
    processor.set(kMFreqR, 4.0 / 9);  // 3000 Hz
    processor.set(kMGainR, 0.25);     // -8 dB
    processor.set(kHShelfR, 1.0);
    processor.set(kHFreqR, 5.0 / 9);  // 14000 Hz
    processor.set(kHGainR, 1.0);      // +16 dB
    emptyBlock(processor);
    const StripProcessorT46& strip = *processor.eqStripR;
    EXPECT_EQ(strip.processOn, 0);
    EXPECT_EQ(strip.lowShelfActive, 1);
    EXPECT_EQ(strip.lowFrequency, 82.0);
    EXPECT_EQ(strip.lowGainDb, 8.0);
    EXPECT_EQ(strip.midFrequency, 3000.0);
    EXPECT_EQ(strip.midGainDb, -8.0);
    EXPECT_EQ(strip.highShelfOn, 1);
    EXPECT_EQ(strip.highFrequency, 14000.0);
    EXPECT_EQ(strip.highGainDb, 16.0);
}

TEST(Intake, PreampParametersGoToTheirOwnChannel)
{
    Processor processor;
    processor.set(kDriveL, 1.0);
    processor.set(kOutputR, 0.0);
    processor.set(kHpfR, 1.0);
    processor.set(k28kL, 1.0);
    processor.set(kPhaseR, 1.0);
    emptyBlock(processor);
    // 16 dB is a factor of 6.3096.
    EXPECT_NEAR(processor.preampStripL->driveGainTarget, 6.30957, 1e-5);
    EXPECT_EQ(processor.preampStripR->driveGainTarget, 1.0);
    EXPECT_EQ(processor.preampStripL->outputGainTarget, 1.0);
    EXPECT_NEAR(processor.preampStripR->outputGainTarget, 0.158489, 1e-6);
    EXPECT_EQ(processor.preampStripL->highPass.enabled, 0);
    EXPECT_EQ(processor.preampStripR->highPass.frequency, 800.0);
    EXPECT_EQ(processor.preampStripL->boostOn, 1);
    EXPECT_EQ(processor.preampStripR->boostOn, 0);
    EXPECT_EQ(processor.preampStripL->phaseChangePending, 0);
    EXPECT_EQ(processor.preampStripR->phaseChangePending, 1);
}

TEST(Intake, ThePairsOfDisableSwitchesAreOneSwitchAndTheLastToArriveWins)
{
    Processor processor;
    processor.set(kQB11, 1.0);
    processor.set(kTrfoDsL, 1.0);
    processor.set(kTrfoDsR, 0.0);
    emptyBlock(processor);
    EXPECT_EQ(processor.transformerDisable, 0);
    processor.set(kTrfoDsR, 0.0);
    processor.set(kTrfoDsL, 1.0);
    emptyBlock(processor);
    EXPECT_EQ(processor.transformerDisable, 1);
}

// Where a transformer or the amplifier runs: one input and one output transformer in the whole
// chain, and both to be switched off only while the pre-amplifier is on.
TEST(Intake, StageSwitchesFollowPreampAndSecondStrip)
{
    for (const int preamp : {0, 1})
        for (const int secondary : {0, 1})
            for (const int disable : {0, 1}) {
                SCOPED_TRACE(testing::Message()
                             << "QB11 " << preamp << " 2x " << secondary << " disable " << disable);
                Processor processor;
                processor.set(kTrfoDsL, disable);
                processor.set(kAmpDsbR, disable);
                processor.set(k2x, secondary);
                processor.set(kQB11, preamp);
                emptyBlock(processor);
                const int runs = preamp && disable ? 0 : 1;
                const int outputAtFirst = secondary ? 0 : runs;
                const int outputAtSecond = secondary ? runs : 0;
                for (const auto& strip : {&processor.eqStripL, &processor.eqStripR}) {
                    EXPECT_EQ((*strip)->inputTransformerOn, runs);
                    EXPECT_EQ((*strip)->outputTransformerOn, outputAtFirst);
                    EXPECT_EQ((*strip)->ampOn, runs);
                }
                for (const auto& strip : {&processor.eqStripL2, &processor.eqStripR2}) {
                    EXPECT_EQ((*strip)->inputTransformerOn, 0);
                    EXPECT_EQ((*strip)->outputTransformerOn, outputAtSecond);
                    EXPECT_EQ((*strip)->ampOn, runs);
                }
            }
}

TEST(LatencyReport, GoesOutNineTimesAndThenOnlyAfterANewRate)
{
    Processor processor(48000.0);
    const auto reported = [&] {
        emptyBlock(processor);
        if (processor.reports.getParameterCount() == 0)
            return -1.0;
        int32 offset = 0;
        ParamValue value = 0.0;
        IParamValueQueue* queue = processor.reports.getParameterData(0);
        EXPECT_EQ(queue->getParameterId(), static_cast<ParamID>(kLatency));
        queue->getPoint(0, offset, value);
        return value;
    };
    for (int block = 1; block <= 9; ++block)
        EXPECT_NEAR(reported(), 0.002, 1e-9) << block;  // 2 ms
    EXPECT_EQ(reported(), -1.0);

    ProcessSetup setup{kRealtime, kSample32, 4096, 192000.0};
    processor.setupProcessing(setup);
    processor.setActive(true);
    for (int block = 1; block <= 30; ++block)
        EXPECT_EQ(reported(), 0.0) << block;
}

TEST(LatencyReport, WaitsForAHostThatListens)
{
    Processor processor;
    ProcessData deaf;
    AudioBusBuffers bus;
    float* channels[2] = {};
    bus.numChannels = 2;
    bus.channelBuffers32 = channels;
    deaf.numInputs = deaf.numOutputs = 1;
    deaf.inputs = deaf.outputs = &bus;
    for (int block = 0; block < 20; ++block)
        processor.process(deaf);
    EXPECT_EQ(processor.reportedLatencyMs, -1.0f);
}
