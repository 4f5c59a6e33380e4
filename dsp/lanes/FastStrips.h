// The strips of one or two channels on their way through the kernels, and what is decided for them
// once a block: which gains stand still, and which channels can go side by side.
#pragma once

#include "dsp/lanes/StripChain.h"
#include "dsp/lanes/StripKernels.h"

// Whether the kernels can take the chain as it is set now. They know nothing of gliding filters,
// limiters, or filters that are off, all of which are rare or never met.
bool canRunFast(const StripChain& chain);

class FastStrips {
public:
    // `rows` as the kernels have them: `count` rows of `lanes` (1 or 2) samples.
    FastStrips(double* rowsInPlace, int rowCount, int laneCount)
        : rows(rowsInPlace), count(rowCount), lanes(laneCount)
    {
    }

    // One strip for each lane.
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
    FactorRows compensation{};
    double compensations[kMaxFactors];
    double factors[4][kMaxFactors];
};
