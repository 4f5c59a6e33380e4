// The interface of the oversampling kernels: the history of a stage, laid out for vector lanes, and
// the table of an instruction set's functions.
//
// A kernel computes sixteen neighbouring outputs at once, several in the lanes of one vector. The
// history holds every sample once for each lane, so that one entry has the samples that one vector
// needs at one tap. With four lanes and M samples of input for each output:
//
//   lane                         0          1           2            3
//   entry q of the history       x[q]       x[q + 4M]   x[q + 8M]    x[q + 12M]
//   sums in vector v (0 to 3)    y[v]       y[v + 4]    y[v + 8]     y[v + 12]
//
// Every lane computes what the plain form computes, in the same order. No entry lies in two cache
// lines, and neighbouring vectors use the same entries, M taps apart.
#pragma once

#include "shell/oversampling/PlainOversampling.h"

constexpr int kOutputsAtOnce = 16;

struct SlidingHistory {
    double* entries;  // of one channel or both
    double* samples;  // the latest ones in a row; this is the place of the next
    int reach;        // how many entries of the past the filter reads
    int capacity;     // of both, with room for the block being written
    int position;     // entry of the next sample
};

// The stages of one instruction set. Outputs are always written in sixteens; those beyond `count`
// are meaningless.
struct OversamplingKernels {
    int channels;  // 1, or 2 if both channels go through one call with one history

    // `count` (1 to 16) samples of `in` become 2 x count samples of `out`.
    void (*firstDoubling)(SlidingHistory& history, const double* coeffs, const SubBlock& in,
                          const SubBlock& out, int count);
    void (*secondDoubling)(SlidingHistory& history, const double* coeffs, const SubBlock& in,
                           const SubBlock& out, int count);
    // Of 2 x count or 4 x count samples of `in`, `count` (1 to 16) remain in `out`.
    void (*keepEverySecond)(SlidingHistory& history, const double* coeffs, const SubBlock& in,
                            const SubBlock& out, int count);
    void (*keepEveryFourth)(SlidingHistory& history, const double* coeffs, const SubBlock& in,
                            const SubBlock& out, int count);
};

extern const OversamplingKernels kOversamplingSse2;
extern const OversamplingKernels kOversamplingAvx2;
extern const OversamplingKernels kOversamplingAvx512;
