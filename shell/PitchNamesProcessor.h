// PitchNamesProcessor: the audio half of the plug-in. It owns the strips of both channels, applies
// the parameter changes at the start of each block and runs the block through the strips at the
// oversampled rate.
//
// It has no state that hosts store: every setting reaches it as a parameter change.
#pragma once

#include "dsp/lanes/StripRun.h"
#include "shell/oversampling/Oversampling.h"

#include "public.sdk/source/vst/vstaudioeffect.h"

#include <memory>

namespace Steinberg {
namespace Vst {

class PitchNamesProcessor : public AudioEffect {
public:
    // All forms give the same bits; the default is the fastest on this machine.
    explicit PitchNamesProcessor(ProcessingForm processingForm = bestProcessingForm());
    ~PitchNamesProcessor() override;

    tresult PLUGIN_API initialize(FUnknown* context) override;
    // Selects the oversampling for the host's rate and clears its histories, whatever `state` is.
    tresult PLUGIN_API setActive(TBool state) override;

    // Accepts one input and one output bus: mono, mono to stereo, or stereo. Any other channel
    // count is refused and resets both buses to stereo; another number of buses is refused and
    // changes nothing.
    tresult PLUGIN_API setBusArrangements(SpeakerArrangement* inputs, int32 numIns,
                                          SpeakerArrangement* outputs, int32 numOuts) override;
    // 96 below a host rate of 176400 Hz, 0 from there up; 96 until the first setActive.
    uint32 PLUGIN_API getLatencySamples() override;
    tresult PLUGIN_API setupProcessing(ProcessSetup& setup) override;
    tresult PLUGIN_API process(ProcessData& data) override;

protected:
    // For a licence check: false passes the sound unchanged and without delay.
    virtual bool mayProcess() const { return true; }

    // In samples, for a host's rate in Hz.
    static int32 latencyAt(double rate);

    // PitchNamesProcessorParameters.cpp
    void readParameterChanges(IParameterChanges* changes);
    void applyParameter(ParamID id, ParamValue value);
    void updateStageSwitches();
    void reportLatency(IParameterChanges* outputChanges);

    // PitchNamesProcessorBlocks.cpp. Channel pointers are the host's; n is the block's length at
    // the host's rate, count that of a sub-block at the strips' rate.
    void processStereo(Sample32** inputs, Sample32** outputs, int32 n);
    void processMono(Sample32** inputs, Sample32** outputs, int32 n);
    void passStereo(Sample32** inputs, Sample32** outputs, int32 n);
    void passMono(Sample32** inputs, Sample32** outputs, int32 n);
    void startBlockPolarity(Sample32** inputs, int32 n);
    StripChain leftChain() const;
    StripChain rightChain() const;
    void writeStereo(Sample32* outL, Sample32* outR, int count) const;
    void writeMono(Sample32* out, int count) const;

    int32 processMode = -1;  // of the last setup; the sound does not depend on it
    bool stereoIn = true;
    bool stereoOut = true;

    // One channel each: L is the left or mid channel, R the right or side channel. Null if memory
    // ran out.
    std::unique_ptr<StripProcessorT46> eqStripL, eqStripR;
    std::unique_ptr<StripProcessorQB9> preampStripL, preampStripR;
    std::unique_ptr<StripProcessorT46> eqStripL2, eqStripR2;

    // A sub-block is 16 samples at the host's rate and up to four times that at the strips'.
    double workL[StripProcessorQB9::kMaxCount], workR[StripProcessorQB9::kMaxCount];

    // Settings from the parameters.
    int32 powerOn = 1;
    int32 channel1Active = 1;
    int32 channel2Active = 1;
    int32 secondaryOn = 0;
    int32 preampOn = 0;
    int32 midSideOn = 0;
    int32 channelMode = 2;
    int32 transformerDisable = 0;
    int32 ampDisable = 0;

    int32 phaseDoneForBlock = 0;  // 1: the polarity stage has run on the whole block

    const ProcessingForm processingForm;
    Oversampling oversampling;
    int32 oversampleMode = 2;           // 0 none, 1 twice, 2 four times
    double oversampledRate = 176400.0;  // Hz, the rate at which the strips run
    int32 latencySamples = 96;
    float latencyMs;
    float reportedLatencyMs = -1.0f;  // counts down to -10, then is the reported latency
};

}  // namespace Vst
}  // namespace Steinberg
