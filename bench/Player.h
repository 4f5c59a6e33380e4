// The processor in one form, activated and driven block by block as by a host.
#pragma once

#include "bench/Signals.h"
#include "dsp/ProcessingForm.h"
#include "shell/PitchNamesProcessor.h"

#include "public.sdk/source/vst/hosting/parameterchanges.h"

#include <algorithm>
#include <memory>
#include <vector>

struct Setting {
    unsigned id;
    double value;
};

class Player {
public:
    Player(ProcessingForm form, double rate, const std::vector<Setting>& settings)
        : processor(new Steinberg::Vst::PitchNamesProcessor(form)), changes(64)
    {
        processor->initialize(nullptr);
        Steinberg::Vst::ProcessSetup setup{Steinberg::Vst::kRealtime, Steinberg::Vst::kSample32,
                                           4096, rate};
        processor->setupProcessing(setup);
        change(settings);
        playBlock(0, 0);
        activate();
    }
    ~Player() { processor->terminate(); }
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    // Reactivates the processor, which ends every glide at its target.
    void activate()
    {
        processor->setActive(false);
        processor->setActive(true);
    }

    // Takes effect with the next block.
    void change(const std::vector<Setting>& settings)
    {
        for (const Setting& setting : settings) {
            Steinberg::int32 index = 0;
            changes.addParameterData(setting.id, index)->addPoint(0, setting.value, index);
        }
    }

    // Copies the part of a signal to process next, since the processor may invert its input.
    void load(const StereoSignal& signal, int start, int frames)
    {
        for (std::size_t c = 0; c < 2; ++c) {
            in[c].assign(signal[c].begin() + start, signal[c].begin() + start + frames);
            out[c].resize(in[c].size());
        }
    }

    void play(int block)
    {
        const int frames = static_cast<int>(in[0].size());
        for (int done = 0; done < frames; done += block)
            playBlock(done, std::min(block, frames - done));
    }

    const StereoSignal& output() const { return out; }

private:
    void playBlock(int start, int frames)
    {
        float* from[] = {in[0].data() + start, in[1].data() + start};
        float* to[] = {out[0].data() + start, out[1].data() + start};
        Steinberg::Vst::AudioBusBuffers inBus, outBus;
        inBus.numChannels = outBus.numChannels = 2;
        inBus.channelBuffers32 = from;
        outBus.channelBuffers32 = to;
        Steinberg::Vst::ProcessData data;
        data.numSamples = frames;
        data.numInputs = data.numOutputs = 1;
        data.inputs = &inBus;
        data.outputs = &outBus;
        data.inputParameterChanges = &changes;
        processor->process(data);
        changes.clearQueue();
    }

    std::unique_ptr<Steinberg::Vst::PitchNamesProcessor> processor;
    Steinberg::Vst::ParameterChanges changes;
    StereoSignal in, out;
};
