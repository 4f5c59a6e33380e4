// Oversampling: raises the signal from the host's rate to the rate of the strips and brings it
// back, in the form that suits the machine: the plain filters or the kernels of an instruction set,
// with the same bits.
//
//   up, twice        first doubling
//   up, four times   first doubling, second doubling
//   down             a 255-tap low-pass at the oversampled rate, then every second or fourth of
//                    its outputs
//
// Either way the signal comes out 96 host samples late: the odd outputs of the doublings are the
// inputs of 32 and 64 steps ago, the low-pass is centred 128 steps back, and the kept outputs lie
// on the input's grid (64 + 32 samples at twice the rate, 32 + 64 at four times).
#pragma once

#include "dsp/ProcessingForm.h"
#include "shell/oversampling/OversamplingKernels.h"
#include "shell/oversampling/PlainOversampling.h"

#include <memory>

class Oversampling {
public:
    // Falls back to the plain form where memory runs out.
    explicit Oversampling(ProcessingForm form = bestProcessingForm());
    ~Oversampling();

    // Starts over from silence. Required before another mode or another number of channels.
    void clear();

    // Takes `count` samples (1 to 16) of `work` to twice (mode 1) or four times (mode 2) their rate
    // and returns how many they are there; mode 0 changes nothing. A buffer of `work` has room for
    // 64 samples; those beyond the result may be written too.
    int raiseRate(int mode, const SubBlock& work, int count);

    // The way back: `count` samples of `work`, a whole number at the host's rate.
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
