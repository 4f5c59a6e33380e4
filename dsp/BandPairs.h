// The combinations of two bands, and the differences in how the two interact.
#pragma once

#include "dsp/BandMode.h"

#include <array>

// The gain of the neighbour that an interaction takes.
enum class OtherGain {
    Knob,   // of its knob, quantised
    Model,  // of its band model
};
enum class OutputGain {
    Geometric,    // sqrt(lower * upper)
    MostlyLower,  // lower * 0.8 + upper * 0.2
};
// Whether the upper band uses the skirt ratio of its interaction or the inverse.
enum class UpperRatio { Inverted, Unchanged };

struct BandPair {
    Band lower, upper;
    OtherGain otherGain;
    OutputGain outputGain;
    UpperRatio upperRatio;

    constexpr int mode() const { return lower | upper; }
};

// Three cells are irregular, all on purpose and all audible:
// - low and high shelf take each other's gain from the model, not from the knob;
// - low shelf and mid bell mix their output gains arithmetically, mostly the shelf's;
// - mid and high bell do not invert the upper ratio; the section raises a ratio below 1 to 1, so
//   the high bell's skirt stays at the band's lower edge.
// clang-format off
constexpr std::array<BandPair, 8> kBandPairs{{
//   lower          upper           other gain        output gain              upper ratio
    {kLowShelfBand, kHighShelfBand, OtherGain::Model, OutputGain::Geometric,   UpperRatio::Inverted},
    {kLowBellBand,  kHighShelfBand, OtherGain::Knob,  OutputGain::Geometric,   UpperRatio::Inverted},
    {kLowShelfBand, kMidBellBand,   OtherGain::Knob,  OutputGain::MostlyLower, UpperRatio::Inverted},
    {kMidBellBand,  kHighShelfBand, OtherGain::Knob,  OutputGain::Geometric,   UpperRatio::Inverted},
    {kLowBellBand,  kMidBellBand,   OtherGain::Knob,  OutputGain::Geometric,   UpperRatio::Inverted},
    {kLowShelfBand, kHighBellBand,  OtherGain::Knob,  OutputGain::Geometric,   UpperRatio::Inverted},
    {kLowBellBand,  kHighBellBand,  OtherGain::Knob,  OutputGain::Geometric,   UpperRatio::Inverted},
    {kMidBellBand,  kHighBellBand,  OtherGain::Knob,  OutputGain::Geometric,   UpperRatio::Unchanged},
}};
// clang-format on
