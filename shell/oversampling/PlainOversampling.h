// PlainOversampling: the stages of the oversampling one by one, and the design of their filters.
// A stage works on one sub-block, for one channel or two, and keeps its history between sub-blocks.
#pragma once

#include "shell/oversampling/DecimationTables.h"

// The samples of one sub-block, one or two channels; `right` is null for one channel. A buffer
// holds up to 64 samples.
struct SubBlock {
    double* left;
    double* right;
};

class PlainOversampling {
public:
    PlainOversampling();

    // Fills the interpolators' tables; the result is the same every time.
    void designOversamplingFilters();

    // Clears the histories and resets the cursors.
    void clear();

    // `count` samples of `in` become 2 x count samples of `out`, which must be another buffer.
    void firstDoubling(const SubBlock& in, const SubBlock& out, int count);
    void secondDoubling(const SubBlock& in, const SubBlock& out, int count);

    // Low-passes `count` samples of `in` into `out`; `in` and `out` may be the same buffer.
    // `coeffs` is down2xCoeffs or down4xCoeffs.
    void decimationFilter(const double* coeffs, const SubBlock& in, const SubBlock& out, int count);

    // Tap i belongs to distance i - 63 (i - 127) from the centre.
    double upStage1Coeffs[128];
    double upStage2Coeffs[256];

private:
    double upRing1L[128], upRing1R[128];
    double upRing2L[256], upRing2R[256];
    double downRingL[256], downRingR[256];
    int upIndex1;  // write cursors of the doublings; they count down
    int upIndex2;
    int downIndex;  // write cursor of the low-pass; it counts up
};

// Keeps the odd ones of 2 x count samples, in place or into another buffer: position i becomes
// position 2i + 1.
void keepOddSamples(const double* in, double* out, int count);
