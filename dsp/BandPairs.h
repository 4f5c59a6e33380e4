// The combinations of two bands, and how the two see each other in each.
#pragma once

#include "dsp/BandMode.h"

#include <array>

// The neighbour's gain that an interaction is told.
enum class OtherGain {
    Knob,   // as the knob was quantised
    Model,  // as the neighbour's model has it
};
enum class OutputGain {
    Geometric,    // sqrt(lower * upper)
    MostlyLower,  // lower * 0.8 + upper * 0.2
};
// The upper band's skirt ratio, as its interaction gave it or inverted.
enum class UpperRatio { Inverted, AsItStands };

struct BandPair {
    Band lower, upper;
    OtherGain otherGain;
    OutputGain outputGain;
    UpperRatio upperRatio;

    constexpr int mode() const { return lower | upper; }
};

// Three cells are irregular, all on purpose and all audible:
// - low and high shelf tell each other the gain of the model, not of the knob;
// - low shelf and mid bell mix their output gains arithmetically, mostly the shelf's;
// - mid and high bell leave the upper ratio as it stands, and as a ratio below 1 is then raised to
//   1, the high bell's skirt stays at the band's lower edge.
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
    {kMidBellBand,  kHighBellBand,  OtherGain::Knob,  OutputGain::Geometric,   UpperRatio::AsItStands},
}};
// clang-format on
