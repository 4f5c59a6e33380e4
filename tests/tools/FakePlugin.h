// A mock plug-in: a gain, which is its only parameter, a given function per sample, and a delay
// that it reports as latency.
#pragma once

#include "tools/host/Plugin.h"

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

class FakePlugin : public host::Plugin {
public:
    // Computes one sample of one channel.
    using Arithmetic = std::function<float(int channel, float x)>;

    FakePlugin(int samplesOfDelay, Arithmetic rule)
        : delay(samplesOfDelay), arithmetic(std::move(rule))
    {
    }

    std::vector<int> blockSizes;  // in the order of processing
    double rate = 0.0;

    host::EffectFields fields() override { return {1, 1, inputs, outputs, 16, delay, 0, 0}; }
    using host::Plugin::dispatch;
    VstIntPtr dispatch(VstInt32 opcode, VstInt32, VstIntPtr value, float opt) override
    {
        if (opcode == effSetSampleRate)
            rate = static_cast<double>(opt);
        if (opcode == effMainsChanged && value)
            for (std::vector<float>& line : lines)
                line.assign(static_cast<std::size_t>(delay), 0.0f);
        return 0;
    }
    VstIntPtr dispatch(VstInt32, VstInt32, VstIntPtr, std::vector<std::uint8_t>&) override
    {
        return 0;
    }
    std::vector<std::uint8_t> chunk(VstInt32) override { return {}; }
    bool setSpeakerArrangement(int in, int out) override
    {
        inputs = in;
        outputs = out;
        return true;
    }
    void setParameter(VstInt32, float value) override { gain = value; }
    float parameter(VstInt32) override { return gain; }
    void process(float** in, float** out, int samples) override
    {
        blockSizes.push_back(samples);
        for (int channel = 0; channel < outputs; ++channel) {
            std::vector<float>& line = lines[channel];
            const float* source = in[channel < inputs ? channel : 0];
            for (int i = 0; i < samples; ++i) {
                line.push_back(arithmetic(channel, gain * source[i]));
                out[channel][i] = line.front();
                line.erase(line.begin());
            }
        }
        // Overwrites the inputs, since hosts must not rely on them afterwards.
        for (int channel = 0; channel < inputs; ++channel)
            std::fill(in[channel], in[channel] + samples, 123.0f);
    }
    host::HostReports reports() override { return {}; }
    void clearReports() override { }
    void idle() override { }

private:
    int inputs = 2;
    int outputs = 2;
    int delay;
    Arithmetic arithmetic;
    float gain = 1.0f;
    std::vector<float> lines[2];
};
