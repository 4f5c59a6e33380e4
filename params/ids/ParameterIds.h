// The numbers of the parameters. Projects and presets store them: they never change.
#pragma once

enum ParameterId : unsigned {
    kPower = 0,
    kBpsCh1 = 1,
    kBpsCh2 = 2,
    kChannel = 3,
    kMS = 4,
    kQB11 = 5,
    k2x = 6,
    kLink = 7,
    kDriveL = 8,
    kDriveR = 9,
    kHpfL = 10,
    kHpfR = 11,
    kOutputL = 12,
    kOutputR = 13,
    k28kL = 14,
    k28kR = 15,
    kPhaseL = 16,
    kPhaseR = 17,
    kTrfoDsL = 18,
    kTrfoDsR = 19,
    kAmpDsbL = 20,
    kAmpDsbR = 21,

    // The equaliser strips: left on even numbers, right on odd ones.
    kProcL = 22,
    kProcR = 23,
    kLShelfL = 24,
    kLShelfR = 25,
    kLFreqL = 26,
    kLFreqR = 27,
    kLGainL = 28,
    kLGainR = 29,
    kMFreqL = 30,
    kMFreqR = 31,
    kMGainL = 32,
    kMGainR = 33,
    kHShelfL = 34,
    kHShelfR = 35,
    kHFreqL = 36,
    kHFreqR = 37,
    kHGainL = 38,
    kHGainR = 39,

    // The secondary strips, in the same order.
    kProcL2 = 40,
    kProcR2 = 41,
    kLShlfL2 = 42,
    kLShlfR2 = 43,
    kLFreqL2 = 44,
    kLFreqR2 = 45,
    kLGainL2 = 46,
    kLGainR2 = 47,
    kMFreqL2 = 48,
    kMFreqR2 = 49,
    kMGainL2 = 50,
    kMGainR2 = 51,
    kHShlfL2 = 52,
    kHShlfR2 = 53,
    kHFreqL2 = 54,
    kHFreqR2 = 55,
    kHGainL2 = 56,
    kHGainR2 = 57,

    // 58 does not exist.
    kLatency = 59,
};

// Parameters 0 to 57 can be set and automated, and presets store them.
constexpr unsigned kPresetParamCount = 58;
