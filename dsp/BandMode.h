// The bands of a strip that are in circuit: its bandMode is a sum of these flags.
#pragma once

enum Band : int {
    kLowShelfBand = 1,
    kHighShelfBand = 2,
    kLowBellBand = 4,
    kMidBellBand = 8,
    kHighBellBand = 16,
};
constexpr int kNoBands = 0;
constexpr int kBandsOff = 32;  // all bands switched off by the process switch

constexpr int kLowBands = kLowShelfBand | kLowBellBand;
constexpr int kHighBands = kHighShelfBand | kHighBellBand;

// True for kBandsOff and for a sum with at most one of shelf and bell for each band.
constexpr bool isPossibleBandMode(int mode)
{
    if (mode == kBandsOff)
        return true;
    return mode >= 0 && mode < kBandsOff && (mode & kLowBands) != kLowBands
        && (mode & kHighBands) != kHighBands;
}
