// Runs the strips of one or two channels through the kernels. Decided once a block: which gains are
// constant, and whether both channels go through one kernel.
#pragma once

#include "dsp/lanes/StripChain.h"
#include "dsp/lanes/StripKernels.h"

// Whether the kernels can process the chain in its present state. They support no gliding filters,
// no limiters and no disabled filters, which are rare or never occur.
bool canRunFast(const StripChain& chain);

class FastStrips {
public:
    // `rows`, processed in place: `count` rows of `lanes` (1 or 2) samples (StripKernels.h).
    FastStrips(double* rows, int count, int lanes) : rows(rows), count(count), lanes(lanes) { }

    // `strips` has one strip for each lane.
    void runPreampInput(StripProcessorQB9* const* strips);
    void runStrip(StripProcessorT46* const* strips);
    void runPreampOutput(StripProcessorQB9* const* strips);  // after runPreampInput

private:
    static constexpr int kMaxLanes = 2;
    static constexpr int kMaxFactors = StripProcessorQB9::kMaxCount * kMaxLanes;
    struct StripFactors {
        BandShares shares;
        FactorRows output;
    };

    template <class Strip, class Setting, class Run>
    void runLanes(Strip* const* strips, Setting setting, Run run);
    StripFactors stepGains(StripProcessorT46* const* strips);

    double* const rows;
    const int count;
    const int lanes;
    FactorRows compensation{};  // of the drive, from runPreampInput to runPreampOutput
    double compensations[kMaxFactors];
    double factors[4][kMaxFactors];
};
