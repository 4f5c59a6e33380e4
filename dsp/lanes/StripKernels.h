// The kernels of the fast forms: each runs some stages of a strip over all samples of a block.
//
// The samples of the channels are interleaved in rows; each channel is a lane of a vector. In four
// lanes two strips work at the same time, each on its own samples (StripRun.h):
//
//   one lane     row i  | x[i] |
//   two lanes    row i  | left[i] | right[i] |
//   four lanes   row i  | first strip: left[i] | right[i] | second strip: left[i] | right[i] |
//
// The speed of a kernel is limited by the filters' recursions, chains of four or five dependent
// operations from sample to sample, and by the number of operations. So a kernel runs several
// filters on different samples at the same time (StripStages.h has a diagram), and as many strips
// as its vectors have room for.
#pragma once

#include "dsp/StripProcessorQB9.h"
#include "dsp/StripProcessorT46.h"

constexpr int kMaxLanes = 4;
constexpr int kMaxRows = StripProcessorQB9::kMaxCount;

// A factor for each lane of every row; with a stride of 0 all rows have the same factors.
struct FactorRows {
    const double* at;
    int stride;

    FactorRows lane(int k) const { return {at + k, stride}; }
};

// The bands' shares, 1 - G, and the strip's output gain.
struct BandGains {
    FactorRows low, mid, high, output;

    BandGains lane(int k) const { return {low.lane(k), mid.lane(k), high.lane(k), output.lane(k)}; }
};

// The rows of BandGains.
struct BandGainRows {
    double low[kMaxLanes * kMaxRows], mid[kMaxLanes * kMaxRows], high[kMaxLanes * kMaxRows],
        output[kMaxLanes * kMaxRows];
};

// The gains of a strip in each lane, and their steps from row to row.
struct GainGlides {
    struct Glide {
        double gain[kMaxLanes], step[kMaxLanes];
    };
    Glide low, mid, high, output;
};

// The gains of the pre-amplifier's output stage for a block. They are computed when the block
// passes the drive.
struct PreampGains {
    double compensation[2 * kMaxRows], output[2 * kMaxRows];
    int stride;  // as in FactorRows
};

// What a kernel of the bands works on.
struct BandJob {
    StripProcessorT46* const* strips;
    BandGains gains;
    bool* beyondKnee;  // set by a run: whether bendBeyondKnee must follow
    double* rows;
};

// A kernel that is set up once for many runs on the same rows of memory, with new samples in them.
// It keeps the histories of its filters until writeBack.
struct StripPipeline {
    void (*run)(void* memory, int count);
    void (*writeBack)(const void* memory);
    alignas(64) unsigned char memory[8192];
};

// The kernels for a number of lanes; `strips` has one strip for each. All filters in use must be
// enabled, without a glide or a limiter, and all strips must have the same switches: those of the
// first are read.
struct LaneKernels {
    // Drive gain, then high-pass (if it is on) and 28 kHz boost (if it is on). `gliding`: drive or
    // output gain move.
    void (*preampInput)(StripProcessorQB9* const* strips, bool gliding, PreampGains& gains,
                        double* rows, int count);
    // Drive compensation and output gain.
    void (*preampOutput)(const PreampGains& gains, double* rows, int count);
    // Input transformer (if it is on), DC block and damping.
    void (*input)(StripProcessorT46* const* strips, double* rows, int count);
    // Output transformer.
    void (*output)(StripProcessorT46* const* strips, double* rows, int count);
    // High, mid and low band, by band mode, output gain and amplifier up to its knee (if it is on);
    // empty for impossible modes.
    void (*bands[kBandsOff])(const BandJob& job, int count);
    // Moves the gains along `count` rows.
    void (*glideGains)(GainGlides& glides, BandGainRows& rows, int count);
    // The amplifier above its knee, on `count` samples behind the rest of it.
    void (*bendBeyondKnee)(double* samples, int count);
};

// All strips of two channels at the same time, up to the bands: the pre-amplifier and the input
// transformer of the first strip on the rows of `next`, the output transformer of the last strip on
// the rows that it has in `body`, which go to `out`; then DC block and damping, of the first strip
// behind its transformer, of the second one on the first one's rows in `body`. Their results are
// the new rows of `body`.
struct InputOfAll {
    StripProcessorQB9* const* preamps;  // null without pre-amplifier
    bool preampGliding;                 // as for preampInput
    PreampGains* preampGains;
    StripProcessorT46* const* strips;
    const FactorRows* amplifierGain;  // null if bands follow; else gain and amplifier follow here
    bool* beyondKnee;                 // of that amplifier, as in BandJob
    const double* next;               // rows of two lanes
    double* body;                     // rows of all strips
    double* out;                      // rows of two lanes
    double* scratch;                  // rows of four lanes
};

// The kernels for all strips at the same time, by the number of strips in each channel.
struct ParallelKernels {
    void (*inputOfAll)(const InputOfAll& job, StripPipeline& pipeline);
    // As LaneKernels::bands, for many runs.
    void (*bands[kBandsOff])(const BandJob& job, StripPipeline& pipeline);
    // As LaneKernels::glideGains and bendBeyondKnee.
    void (*glideGains)(GainGlides& glides, BandGainRows& rows, int count);
    void (*bendBeyondKnee)(double* samples, int count);
};

// For every processor.
extern const LaneKernels kOneLane, kTwoLanes;
// For one strip in each channel and for two.
extern const ParallelKernels kParallelAvx2[2], kParallelAvx512[2];
