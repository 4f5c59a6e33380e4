// The kernels of the fast form: each runs some stages of a strip over all samples of a block.
//
// The samples of the channels are interleaved in rows; each channel is a lane of a vector:
//
//   one lane     row i  | x[i] |
//   two lanes    row i  | left[i] | right[i] |
//
// SSE2, which every x86-64 processor has, is enough: the speed of a kernel is limited by the
// filters' recursions, chains of four or five dependent operations from sample to sample, and not
// by the width of its vectors. So a kernel runs several filters on different samples at the same
// time; StripStages.h has a diagram.
#pragma once

#include "dsp/StripProcessorQB9.h"
#include "dsp/StripProcessorT46.h"

// A factor for each lane of every row; with a stride of 0 all rows have the same factors.
struct FactorRows {
    const double* at;
    int stride;

    FactorRows lane(int k) const { return {at + k, stride}; }
};

// The bands' shares: 1 - G.
struct BandShares {
    FactorRows low, mid, high;

    BandShares lane(int k) const { return {low.lane(k), mid.lane(k), high.lane(k)}; }
};

// The kernels for a number of lanes; `strips` has one strip for each. All filters in use must be
// enabled, without a glide or a limiter, and all strips must have the same switches: those of the
// first are read.
struct LaneKernels {
    // Drive gain, then high-pass (if it is on) and 28 kHz boost (if it is on).
    void (*preampInput)(StripProcessorQB9* const* strips, FactorRows drive, double* rows,
                        int count);
    // Drive compensation and output gain.
    void (*preampOutput)(FactorRows compensation, FactorRows outputGain, double* rows, int count);
    // Input transformer (if it is on), DC block and damping.
    void (*input)(StripProcessorT46* const* strips, double* rows, int count);
    // High, mid and low band, by band mode; empty for no bands and for impossible modes.
    void (*bands[kBandsOff])(StripProcessorT46* const* strips, BandShares shares, double* rows,
                             int count);
    // The bands' output gain, amplifier (if it is on) and output transformer (if it is on).
    void (*output)(StripProcessorT46* const* strips, FactorRows outputGain, double* rows,
                   int count);
};

extern const LaneKernels kOneLane;
extern const LaneKernels kTwoLanes;
