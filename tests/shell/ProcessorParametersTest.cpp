// How parameter changes reach switches and strips, and how the latency is reported.
#include "tests/shell/ProcessorProbe.h"

#include <gtest/gtest.h>

using namespace probe;

namespace {

// A queue that announces a point but fails to return it, though it writes a value.
struct BrokenQueue : ParameterValueQueue {
    using ParameterValueQueue::ParameterValueQueue;
    int32 PLUGIN_API getPointCount() override { return 1; }
    tresult PLUGIN_API getPoint(int32, int32&, ParamValue& value) override
    {
        value = 0.0;
        return kResultFalse;
    }
};

// Changes with no queue, a broken one and a good one.
struct BrokenChanges : ParameterChanges {
    int32 PLUGIN_API getParameterCount() override { return 3; }
    IParamValueQueue* PLUGIN_API getParameterData(int32 index) override
    {
        return index == 0 ? nullptr : index == 1 ? &broken : ParameterChanges::getParameterData(0);
    }
    BrokenQueue broken{kPower};
};

// A host that accepts no output parameter changes.
struct NoReports : ParameterChanges {
    IParamValueQueue* PLUGIN_API addParameterData(const ParamID&, int32&) override
    {
        return nullptr;
    }
};

}  // namespace

TEST(ProcessorParameters, OnlyTheLastPointOfABlockCountsWhateverItsOffset)
{
    Processor processor;
    processor.set(kChannel, 0.0, 10);
    processor.set(kChannel, 1.0, 20);
    processor.set(kChannel, 0.25, 100);
    processor.flush();
    EXPECT_EQ(processor.channelMode, 1);

    int32 index = 0;
    processor.changes.addParameterData(kChannel, index);  // an empty queue
    processor.set(58, 1.0);
    processor.set(1000, 1.0);
    processor.set(kLatency, 1.0);
    processor.flush();
    EXPECT_EQ(processor.channelMode, 1);
}

TEST(ProcessorParameters, SwitchesTurnOnAtExactlyOneHalf)
{
    Processor processor;
    for (const double value : {0.49999, 0.5}) {
        for (const ParamID id : {kPower, kBpsCh1, kBpsCh2})
            processor.set(id, value);
        processor.flush();
        EXPECT_EQ(processor.powerOn, value == 0.5);
        EXPECT_EQ(processor.channel1Active, value != 0.5);
        EXPECT_EQ(processor.channel2Active, value != 0.5);
    }
}

TEST(ProcessorParameters, ChangesThatCannotBeReadAreSkippedOneByOne)
{
    Processor processor;
    BrokenChanges changes;
    int32 index = 0;
    changes.addParameterData(kChannel, index)->addPoint(0, 0.25, index);
    ProcessData data;
    data.inputParameterChanges = &changes;
    processor.process(data);
    EXPECT_EQ(processor.powerOn, 1);
    EXPECT_EQ(processor.channelMode, 1);
}

// Even if the value does not change.
TEST(ProcessorParameters, EveryArrivalOfAStageSwitchStartsTheGainGlidesAnew)
{
    for (const ParamID id : {kQB11, k2x, kTrfoDsL, kTrfoDsR, kAmpDsbL, kAmpDsbR}) {
        Processor processor;
        std::vector<Signal> in(2, Signal(64));
        processor.block(in, 2);
        processor.set(id, 0.0);
        processor.flush();
        for (const auto* strip :
             {&processor.eqStripL, &processor.eqStripR, &processor.eqStripL2, &processor.eqStripR2})
            EXPECT_EQ((*strip)->gainRampCount, (*strip)->gainRampLength) << id;
    }
}

TEST(ProcessorParameters, DisableSwitchesCountOnlyWithThePreamplifier)
{
    for (const double preamp : {0.0, 1.0}) {
        Processor processor;
        for (const ParamID id : {kQB11, kTrfoDsL, kAmpDsbL})
            processor.set(id, id == kQB11 ? preamp : 1.0);
        processor.flush();
        EXPECT_EQ(processor.eqStripL->inputTransformerOn, preamp == 0.0);
        EXPECT_EQ(processor.eqStripR->ampOn, preamp == 0.0);
    }
}

TEST(LatencyReport, GoesOutNineTimesAndThenOnlyAfterANewRate)
{
    Processor processor(48000.0);
    const auto reported = [&] {
        processor.flush();
        if (processor.reports.getParameterCount() == 0)
            return -1.0;
        int32 offset = 99;
        ParamValue value = 0.0;
        IParamValueQueue* queue = processor.reports.getParameterData(0);
        EXPECT_EQ(queue->getParameterId(), static_cast<ParamID>(kLatency));
        EXPECT_EQ(queue->getPoint(0, offset, value), kResultTrue);
        EXPECT_EQ(offset, 0);
        return value;
    };
    for (int block = 1; block <= 9; ++block) {
        processor.licensed = block % 2;
        EXPECT_NEAR(reported(), 0.002, 1e-9) << block;  // 2 ms
    }
    EXPECT_EQ(reported(), -1.0);

    ProcessSetup setup{kRealtime, kSample32, 4096, 192000.0};
    processor.setupProcessing(setup);
    processor.setActive(true);
    for (int block = 1; block <= 30; ++block)
        EXPECT_EQ(reported(), 0.0) << block;
}

TEST(LatencyReport, WaitsForAHostThatListensAndCountsWhereItsListIsFull)
{
    Processor processor;
    NoReports full;
    float* channels[2] = {};
    AudioBusBuffers bus;
    bus.numChannels = 2;
    bus.channelBuffers32 = channels;
    ProcessData data;
    data.numInputs = data.numOutputs = 1;
    data.inputs = data.outputs = &bus;
    for (int block = 0; block < 29; ++block) {
        data.outputParameterChanges = block < 20 ? nullptr : &full;
        EXPECT_EQ(processor.reportedLatencyMs, block <= 20 ? -1 : 19 - block) << block;
        processor.process(data);
    }
    EXPECT_EQ(processor.reportedLatencyMs, processor.latencyMs);
}
