// Which bands of a strip are in circuit and how: a sum of these flags is the strip's bandMode.
#pragma once

enum Band : int {
    kLowShelfBand = 1,
    kHighShelfBand = 2,
    kLowBellBand = 4,
    kMidBellBand = 8,
    kHighBellBand = 16,
};
constexpr int kNoBands = 0;
constexpr int kBandsOff = 32;  // taken out by the process switch

constexpr int kLowBands = kLowShelfBand | kLowBellBand;
constexpr int kHighBands = kHighShelfBand | kHighBellBand;

// A band is either shelf or bell, so not every sum can be.
constexpr bool isPossibleBandMode(int mode)
{
    if (mode == kBandsOff)
        return true;
    return mode >= 0 && mode < kBandsOff && (mode & kLowBands) != kLowBands
        && (mode & kHighBands) != kHighBands;
}
