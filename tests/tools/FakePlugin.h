// A plug-in made of plain code, with the parameters and the arithmetic that a test gives it.
#pragma once

#include "Plugin.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

struct FakeParameter {
    std::string title;
    std::string unit;
    int steps;  // 0: continuous
    std::function<std::string(float)> display;
    float value;
};

class FakePlugin : public host::Plugin {
public:
    // One sample of one channel: channel, input, parameters.
    using Arithmetic = std::function<float(int, float, const std::vector<FakeParameter>&)>;

    explicit FakePlugin(
        std::vector<FakeParameter> own = {}, int samplesOfDelay = 0,
        Arithmetic rule = [](int, float x, const auto&) { return x; })
        : parameters(std::move(own)), delay(samplesOfDelay), arithmetic(std::move(rule))
    {
    }

    std::vector<int> blockSizes;  // as they came
    double rate = 0.0;

    host::EffectFields fields() override
    {
        return {1, static_cast<int>(parameters.size()), inputs, outputs, 16, delay, 0, 0};
    }
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
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index, VstIntPtr,
                       std::vector<std::uint8_t>& bytes) override
    {
        const FakeParameter& parameter = parameters.at(static_cast<std::size_t>(index));
        const auto answer = [&](const std::string& text) {
            std::copy(text.begin(), text.end(), bytes.begin());
            return 0;
        };
        if (opcode == effGetParamName)
            return answer(parameter.title);
        if (opcode == effGetParamLabel)
            return answer(parameter.unit);
        if (opcode == effGetParamDisplay)
            return answer(parameter.display(parameter.value));
        if (opcode == effGetParameterProperties && parameter.steps > 0) {
            VstParameterProperties properties{};
            properties.flags = kVstParameterUsesIntegerMinMax;
            properties.maxInteger = parameter.steps;
            std::memcpy(bytes.data(), &properties, sizeof(properties));
            return 1;
        }
        return 0;
    }
    std::vector<std::uint8_t> chunk(VstInt32) override { return {}; }
    bool setSpeakerArrangement(int in, int out) override
    {
        inputs = in;
        outputs = out;
        return true;
    }
    void setParameter(VstInt32 index, float value) override
    {
        parameters.at(static_cast<std::size_t>(index)).value = value;
    }
    float parameter(VstInt32 index) override
    {
        return parameters.at(static_cast<std::size_t>(index)).value;
    }
    void process(float** in, float** out, int samples) override
    {
        blockSizes.push_back(samples);
        for (int channel = 0; channel < outputs; ++channel) {
            std::vector<float>& line = lines[channel];
            const float* source = in[channel < inputs ? channel : 0];
            for (int i = 0; i < samples; ++i) {
                line.push_back(arithmetic(channel, source[i], parameters));
                out[channel][i] = line.front();
                line.erase(line.begin());
            }
        }
        // Hosts must not rely on their inputs afterwards.
        for (int channel = 0; channel < inputs; ++channel)
            std::fill(in[channel], in[channel] + samples, 123.0f);
    }
    host::HostReports reports() override { return {}; }
    void clearReports() override { }
    void idle() override { }

private:
    std::vector<FakeParameter> parameters;
    int inputs = 2;
    int outputs = 2;
    int delay;
    Arithmetic arithmetic;
    std::vector<float> lines[2];
};
