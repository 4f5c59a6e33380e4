// Runs the strips of one or two channels over the sub-blocks of a block, after the polarity stage.
// The plain form calls the strips one after the other; the fast forms do the same arithmetic on
// several strips at once.
//
// Two channels with equal switches go through the kernels together. Each strip then works one
// sub-block behind the strip in front of it, and the last output transformer one behind the last
// strip, so that nothing waits for the result of something else:
//
//   step                               0    1    2    3   ...
//   input transformer, first strip     A    B    C    D
//   second strip                            A    B    C
//   output transformer                           A    B
//
// A sub-block thus comes out one or two steps after it was pushed. At the end of the block `flush`
// takes out those that are left: no samples are kept between blocks.
#pragma once

#include "dsp/ProcessingForm.h"
#include "dsp/lanes/FastStrips.h"

// One channel's strips, in the order of processing; null for one that is not in the chain.
struct StripChain {
    StripProcessorQB9* preamp;
    StripProcessorT46* first;
    StripProcessorT46* second;
};

class StripRun {
public:
    // A null `right` means one channel. Every form leaves the same bits in the samples and in the
    // strips, so the form may differ from block to block. Until the end of the block nothing else
    // may use the strips.
    StripRun(ProcessingForm form, const StripChain& left, const StripChain* right);

    // Takes the next sub-block, 1 to StripProcessorQB9::kMaxCount finite samples, and puts the next
    // finished one in its place. Returns the number of samples of that, or 0 if none is finished.
    // One channel: `r` is ignored.
    int push(double* l, double* r, int count);

    // The next of the sub-blocks that were pushed; 0 if there is none.
    int flush(double* l, double* r);

private:
    static constexpr int kMaxStrips = 2;

    PreampGains* gainsOf(int subBlock) { return gains + 2 * (subBlock % (kMaxStrips + 1)); }
    void processAtOnce(double* l, double* r, int count);
    void processRows(double* rows, int count, int channel, int lanes);
    int advance(double* l, double* r, int count);
    void advanceOneByOne(const FastStrips& run, int count);
    void take(int strip, double* rows) const;
    void put(int strip, const double* rows, int count);

    const StripChain chains[2];
    const int channels;
    const ParallelKernels* kernels;      // null if strips work one after the other
    StripProcessorQB9* preamps[2] = {};  // left, right
    // First left, first right, second left, second right.
    StripProcessorT46* strips[2 * kMaxStrips] = {};
    bool fast;           // through the kernels
    bool together;       // both channels in one kernel, where their switches agree
    int stripCount = 0;  // in each channel, if they work at the same time; else 0

    // Of strips that work at the same time.
    int pushed = 0, finished = 0;            // sub-blocks
    int rowCounts[kMaxStrips] = {};          // of the sub-block that each strip has processed
    bool parallel = false;                   // `all` is set up
    double next[2 * kMaxRows];               // in front of the first strip
    double body[2 * kMaxStrips * kMaxRows];  // behind the strips
    double leaving[2 * kMaxRows];            // behind the last output transformer
    double scratch[4 * kMaxRows];
    PreampGains gains[2 * (kMaxStrips + 1)];  // two for each sub-block on its way
    ParallelStrips all;
};
