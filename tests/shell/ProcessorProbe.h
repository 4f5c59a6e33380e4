// The processor with its protected members made public, and the host calls that drive it.
#pragma once

#include "params/ids/ParameterIds.h"
#include "shell/PitchNamesProcessor.h"
#include "tests/support/Blocks.h"
#include "tests/support/Noise.h"

#include "pluginterfaces/vst/vstspeaker.h"
#include "public.sdk/source/vst/hosting/parameterchanges.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace probe {

using namespace Steinberg;
using namespace Steinberg::Vst;

class Processor : public PitchNamesProcessor {
public:
    explicit Processor(double rate = 44100.0, ProcessingForm form = bestProcessingForm())
        : PitchNamesProcessor(form), changes(64), reports(64)
    {
        initialize(nullptr);
        ProcessSetup setup{kRealtime, kSample32, 4096, rate};
        setupProcessing(setup);
        setActive(true);
    }
    ~Processor() override { terminate(); }

    using PitchNamesProcessor::channel1Active;
    using PitchNamesProcessor::channel2Active;
    using PitchNamesProcessor::channelMode;
    using PitchNamesProcessor::eqStripL;
    using PitchNamesProcessor::eqStripL2;
    using PitchNamesProcessor::eqStripR;
    using PitchNamesProcessor::eqStripR2;
    using PitchNamesProcessor::latencyMs;
    using PitchNamesProcessor::oversampledRate;
    using PitchNamesProcessor::oversampleMode;
    using PitchNamesProcessor::powerOn;
    using PitchNamesProcessor::preampStripL;
    using PitchNamesProcessor::preampStripR;
    using PitchNamesProcessor::process;
    using PitchNamesProcessor::reportedLatencyMs;

    bool mayProcess() const override { return licensed; }
    bool licensed = true;

    // Adds a change for the next block.
    void set(ParamID id, double value, int32 offset = 0)
    {
        int32 index = 0;
        changes.addParameterData(id, index)->addPoint(offset, value, index);
    }

    // Processes one block of any channel counts and returns the outputs; inputs may change.
    std::vector<Signal> block(std::vector<Signal>& in, std::size_t channelsOut)
    {
        return inPieces(in, {static_cast<int>(in.front().size())}, channelsOut);
    }

    // Processes a whole signal in blocks whose lengths cycle through the given ones.
    std::vector<Signal> render(std::vector<Signal> in, const std::vector<int>& blockLengths,
                               std::size_t channelsOut = 2)
    {
        return inPieces(in, blockLengths, channelsOut);
    }

    void run(std::vector<float*> in, std::vector<float*> out, int32 length)
    {
        AudioBusBuffers inBus, outBus;
        inBus.numChannels = static_cast<int32>(in.size());
        inBus.channelBuffers32 = in.data();
        // Silence flags are neither read nor written.
        inBus.silenceFlags = outBus.silenceFlags = 3;
        outBus.numChannels = static_cast<int32>(out.size());
        outBus.channelBuffers32 = out.data();
        ProcessData data;
        data.numSamples = length;
        data.numInputs = data.numOutputs = 1;
        data.inputs = &inBus;
        data.outputs = &outBus;
        data.inputParameterChanges = &changes;
        data.outputParameterChanges = &reports;
        reports.clearQueue();
        EXPECT_EQ(process(data), kResultOk);
        EXPECT_EQ(outBus.silenceFlags, 3u);
        changes.clearQueue();
    }

    // Hands over the changes with a block of no samples.
    void flush()
    {
        float none = 0.0f;
        run({&none, &none}, {&none, &none}, 0);
    }

    bool arrange(SpeakerArrangement in, SpeakerArrangement out)
    {
        return setBusArrangements(&in, 1, &out, 1) == kResultTrue;
    }

    ParameterChanges changes, reports;

private:
    std::vector<Signal> inPieces(std::vector<Signal>& in, const std::vector<int>& lengths,
                                 std::size_t channelsOut)
    {
        return inBlocks(in, channelsOut, lengths, [this](auto inputs, auto outputs, int length) {
            run(inputs, outputs, length);
        });
    }
};

}  // namespace probe
