// The fast strips' stages, each a kernel that runs over all samples of a block.
//
// The channels lie side by side, a row for each sample, and each is a lane of a vector:
//
//   one lane     row i  | x[i] |
//   two lanes    row i  | left[i] | right[i] |
//
// These are the instructions that every 64-bit machine has. What sets the pace is not the width of
// a vector but the filters' recursions, a chain of four or five operations from sample to sample,
// so a kernel has several filters at work on different samples at the same time: StripStages.h
// draws how.
#pragma once

#include "dsp/StripProcessorQB9.h"
#include "dsp/StripProcessorT46.h"

// A factor for each lane of every row; with a stride of 0 the same ones for all rows.
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

// The stages for a number of lanes, each with a strip of its own. All filters in use are enabled,
// without a glide or a limiter, and all lanes take the same path: what is chosen by a switch is
// chosen by that of the first.
struct LaneKernels {
    // Drive gain, then high-pass (if it is on) and 28 kHz boost (if it is on).
    void (*preampInput)(StripProcessorQB9* const* strips, FactorRows drive, double* rows,
                        int count);
    // Drive compensation and output gain.
    void (*preampOutput)(FactorRows compensation, FactorRows outputGain, double* rows, int count);
    // Input transformer (if it is on), DC block and damping.
    void (*input)(StripProcessorT46* const* strips, double* rows, int count);
    // By band mode, from one band up: high, mid and low band.
    void (*bands[kBandsOff])(StripProcessorT46* const* strips, BandShares shares, double* rows,
                             int count);
    // The bands' output gain, amplifier (if it is on) and output transformer (if it is on).
    void (*output)(StripProcessorT46* const* strips, FactorRows outputGain, double* rows,
                   int count);
};

extern const LaneKernels kOneLane;
extern const LaneKernels kTwoLanes;
