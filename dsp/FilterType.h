// The responses a filter can have; given at construction and never changed.
#pragma once

#include <cstdint>

enum class FilterType : std::int32_t {
    None = 0,       // no processing at all
    HighPass2 = 1,  // second order
    HighPass1 = 2,  // first order
    LowShelf = 3,
    PeakingEq = 4,
    BandPass = 5,  // 0 dB at the centre
    Notch = 6,
    HighShelf = 7,
    LowPass2 = 8,  // second order
    LowPass1 = 9,  // first order
    AllPass = 10,
};
