// The benchmarks.
#pragma once

#include "bench/Report.h"

#include <string>

// What to measure; empty or 0 selects everything.
struct Selection {
    std::string chain;  // "stages", or the name of a chain
    double rate = 0.0;
    int block = 0;
    bool quick = false;  // 48 kHz, blocks of 512, fewer repetitions

    bool wantsStages() const { return chain.empty() || chain == "stages"; }
    bool wantsChain(const char* name) const { return chain.empty() || chain == name; }
    bool wantsRate(double hz) const { return rate > 0.0 ? hz == rate : !quick || hz == 48000.0; }
    bool wantsBlock(int n) const { return block > 0 ? n == block : !quick || n == 512; }
    int repetitions() const { return quick ? 10 : 15; }
};

// Single stages of the audio path, on sub-blocks of 16 frames.
void benchStages(const Selection& selection, Report& report);

// Whole chains: pink noise, then silence, then noise at 1e-40.
void benchChains(const Selection& selection, Report& report);

// Single blocks: one in which every parameter changes, and the first one after activation.
void benchTransients(const Selection& selection, Report& report);

// Loud and quiet signals through a driven chain.
void benchLoudness(const Selection& selection, Report& report);

// Many instances in turn.
void benchInstances(const Selection& selection, Report& report);
