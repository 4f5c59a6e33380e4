// The three kinds of measurement.
#pragma once

#include "Report.h"

#include <string>
#include <vector>

// What to leave out; empty or 0 leaves out nothing.
struct Selection {
    std::string chain;  // "stages", or the name of a chain
    double rate = 0.0;
    int block = 0;
    bool quick = false;  // 48 kHz, blocks of 512, fewer repetitions

    bool wantsStages() const { return chain.empty() || chain == "stages"; }
    bool wantsChain(const char* name) const { return chain.empty() || chain == name; }
    bool wantsRate(double hz) const { return rate > 0.0 ? hz == rate : !quick || hz == 48000.0; }
    bool wantsBlock(int n) const { return block > 0 ? n == block : !quick || n == 512; }
    int repetitions() const { return quick ? 4 : 7; }
};

// Single stages of the audio path, on sub-blocks of 16 frames.
void benchStages(const Selection& selection, Report& report);

// Whole chains: music, then silence, then an input of 1e-40.
void benchChains(const Selection& selection, Report& report);

// What happens once: the block in which every parameter changes, and the one after activation.
void benchTransients(const Selection& selection, Report& report);
