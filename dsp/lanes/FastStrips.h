// The strips of one or two channels on rows of samples, through the kernels: FastStrips stage by
// stage, ParallelStrips all at the same time. Decided here: which gains are constant, and whether
// all lanes go through one kernel.
#pragma once

#include "dsp/lanes/StripKernels.h"

// Whether the kernels can process a strip in its present state. They support no gliding filters, no
// limiters and no disabled filters, which are rare or never occur.
bool canRunFast(const StripProcessorQB9& strip);
bool canRunFast(const StripProcessorT46& strip);

// Whether one kernel can process the stages of both pre-amplifiers, or the bands and amplifiers of
// both strips.
bool haveSameStages(const StripProcessorQB9& a, const StripProcessorQB9& b);
bool haveSameBands(const StripProcessorT46& a, const StripProcessorT46& b);

class FastStrips {
public:
    // One or two channels, a lane for each.
    explicit FastStrips(int channels) : channels(channels) { }

    // In place on `count` rows. `strips` has one strip for each channel. The gains behind the
    // strips are those of the drive's block; `gains` has one entry for each channel.
    void runPreampInput(StripProcessorQB9* const* strips, PreampGains* gains, double* rows,
                        int count) const;
    void runPreampOutput(StripProcessorQB9* const* strips, const PreampGains* gains, double* rows,
                         int count) const;
    void runInput(StripProcessorT46* const* strips, double* rows, int count) const;
    void runBands(StripProcessorT46* const* strips, double* rows, int count) const;
    void runOutputTransformer(StripProcessorT46* const* strips, double* rows, int count) const;

private:
    template <class Strip, class Same, class Run>
    void runLanes(Strip* const* strips, Same same, double* rows, int count, Run run) const;

    const int channels;
};

// All strips of two channels at the same time, with the same switches: pre-amplifier input, input,
// bands, and output transformer of the last strip. Set up once for several runs; until writeBack
// nothing else may use the strips.
class ParallelStrips {
public:
    // `next`, `body`, `out` and `scratch` as in InputOfAll; `preamps` may be null.
    void setUp(const ParallelKernels& kernels, StripProcessorQB9* const* preamps,
               StripProcessorT46* const* strips, int stripCount, const double* next, double* body,
               double* out, double* scratch);
    // `preampGains` get what belongs to this block.
    void run(PreampGains& preampGains, int count);
    void writeBack();

private:
    const ParallelKernels* kernels;
    StripProcessorQB9* const* preamps;
    StripProcessorT46* const* strips;
    double* body;
    int lanes;
    int lastCount;  // of the last run
    bool hasBands, gainsGlide, beyondKnee;
    BandGainRows gainRows;
    PreampGains gains;
    StripPipeline input, bands;
};
