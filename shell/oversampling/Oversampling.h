// Oversampling in the form that suits the machine: the plain filters or the kernels of an
// instruction set, with the same bits.
#pragma once

#include "OversamplingKernels.h"
#include "ProcessingForm.h"

#include <memory>

class FastOversampling {
public:
    // Falls back to the plain form where memory runs out.
    explicit FastOversampling(ProcessingForm form = bestProcessingForm());
    ~FastOversampling();

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

    Oversampling plain;  // also holds the taps
    const OversamplingKernels* stereoKernels;
    const OversamplingKernels* monoKernels;
    std::unique_ptr<Memory> memory;  // null for the plain form
    double tempL[64], tempR[64];
};
