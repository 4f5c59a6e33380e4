// Oversampling: raises the signal from the host's rate to the rate of the strips and lowers it
// again, with the plain filters or with the kernels of an instruction set, which give the same
// bits.
//
//   up, twice        first doubling
//   up, four times   first doubling, second doubling
//   down             a 255-tap low-pass at the oversampled rate, then every second or fourth of
//                    its outputs
//
// Up and down together delay the signal by 96 host samples: the first doubling by 32 samples of its
// input, the second one by 64, and the low-pass by 128. In host samples this is 32 + 64 at twice
// the rate, and 32 + 32 + 32 at four times.
#pragma once

#include "dsp/ProcessingForm.h"
#include "shell/oversampling/OversamplingKernels.h"
#include "shell/oversampling/PlainOversampling.h"

#include <memory>

class Oversampling {
public:
    // Uses the plain form if memory runs out.
    explicit Oversampling(ProcessingForm form = bestProcessingForm());
    ~Oversampling();

    // Clears the histories. Required before another mode or another number of channels.
    void clear();

    // Raises `count` samples (1 to 16) of `work`, in place, to twice (mode 1) or four times (mode
    // 2) their rate and returns their number there; mode 0 changes nothing. A buffer of `work` has
    // room for 64 samples; those beyond the result may be written too.
    int raiseRate(int mode, const SubBlock& work, int count);

    // Lowers `count` samples of `work`, the number that raiseRate returned, to the host's rate and
    // returns their number there.
    int lowerRate(int mode, const SubBlock& work, int count);

private:
    struct Memory;

    int raisePlainly(int mode, const SubBlock& work, int count);
    int lowerPlainly(int mode, const SubBlock& work, int count);

    PlainOversampling plain;  // also holds the taps
    const OversamplingKernels* stereoKernels;
    const OversamplingKernels* monoKernels;
    std::unique_ptr<Memory> memory;  // null for the plain form
    double tempL[64], tempR[64];
};
