// The processor with its protected members open to tests, and the host calls that drive it.
#pragma once

#include "ParameterIds.h"
#include "PitchNamesProcessor.h"

#include "pluginterfaces/vst/vstspeaker.h"
#include "public.sdk/source/vst/hosting/parameterchanges.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace probe {

using namespace Steinberg;
using namespace Steinberg::Vst;

using Signal = std::vector<float>;

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

    // Runs one block of any channel counts, in place of nothing: outputs are new, inputs may
    // change.
    std::vector<Signal> block(std::vector<Signal>& in, std::size_t channelsOut)
    {
        const std::size_t length = in.front().size();
        std::vector<Signal> out(channelsOut, Signal(length, -99.0f));
        std::vector<float*> inPointers, outPointers;
        for (Signal& channel : in)
            inPointers.push_back(channel.data());
        for (Signal& channel : out)
            outPointers.push_back(channel.data());
        run(inPointers, outPointers, static_cast<int32>(length));
        return out;
    }

    void run(std::vector<float*> in, std::vector<float*> out, int32 length)
    {
        AudioBusBuffers inBus, outBus;
        inBus.numChannels = static_cast<int32>(in.size());
        inBus.channelBuffers32 = in.data();
        // Silence is neither heeded nor announced.
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

    // Runs a whole signal in blocks of the given lengths, over and over.
    std::vector<Signal> render(const std::vector<Signal>& in, const std::vector<int>& blockLengths,
                               std::size_t channelsOut = 2)
    {
        std::vector<Signal> out(channelsOut);
        const std::size_t total = in.front().size();
        std::size_t done = 0;
        for (std::size_t turn = 0; done < total; ++turn) {
            const auto wanted = static_cast<std::size_t>(blockLengths[turn % blockLengths.size()]);
            const std::size_t length = std::min(wanted, total - done);
            std::vector<Signal> piece;
            for (const Signal& channel : in)
                piece.emplace_back(channel.begin() + static_cast<std::ptrdiff_t>(done),
                                   channel.begin() + static_cast<std::ptrdiff_t>(done + length));
            const std::vector<Signal> result = block(piece, channelsOut);
            for (std::size_t c = 0; c < channelsOut; ++c)
                out[c].insert(out[c].end(), result[c].begin(), result[c].end());
            done += length;
        }
        return out;
    }

    bool arrange(SpeakerArrangement in, SpeakerArrangement out)
    {
        return setBusArrangements(&in, 1, &out, 1) == kResultTrue;
    }

    ParameterChanges changes, reports;
};

// Reproducible noise between -level and level.
inline Signal noise(std::size_t length, unsigned seed, float level = 0.25f)
{
    Signal signal(length);
    for (float& x : signal) {
        seed = seed * 1664525u + 1013904223u;
        x = level * (static_cast<float>(seed >> 8) / 8388608.0f - 1.0f);
    }
    return signal;
}

}  // namespace probe
