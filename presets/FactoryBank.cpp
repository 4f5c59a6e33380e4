// The factory presets, each as its differences from the defaults.
#include "presets/FactoryBank.h"

#include <initializer_list>

namespace {

enum class Span { One, Pair };

struct Setting {
    ParameterId id;  // the left member of a pair
    Span span;
    float value;  // normalised
};

constexpr Setting one(ParameterId id, float value)
{
    return {id, Span::One, value};
}

// The right member's id follows the left one's.
constexpr Setting both(ParameterId left, float value)
{
    return {left, Span::Pair, value};
}

struct Preset {
    const char* name;
    std::initializer_list<Setting> settings;
};

// clang-format off
constexpr Setting kDefaults[] = {
    one(kPower,     1.0f),   // On
    one(kChannel,   0.5f),   // Stereo
    one(kLink,      1.0f),   // On
    both(kDriveL,   0.5f),   // 0.00
    both(kOutputL,  0.5f),   // 0.00
    both(kProcL,    1.0f),   // On
    both(kLGainL,   0.5f),   // 0.00
    both(kMGainL,   0.5f),   // 0.00
    both(kHGainL,   0.5f),   // 0.00
    both(kProcL2,   1.0f),   // On
    both(kLGainL2,  0.5f),   // 0.00
    both(kMGainL2,  0.5f),   // 0.00
    both(kHGainL2,  0.5f),   // 0.00
};  // all others are 0: "Off", or "Stereo" for MS

// Each row ends with the value as hosts show it. A preset with a comment about its purpose keeps the
// loudness of music about the same, with the output gain if the pre-amplifier is on.
constexpr Preset kPresets[] = {
    {"Default", {}},

    {"Fat Kick", {
        both(kLFreqL,    1.00f),  // 33.00
        both(kLGainL,    0.88f),  // 12.20
    }},

    {"Give it air", {
        one(kQB11,       1.00f),  // On
        both(k28kL,      1.00f),  // On
    }},

    // Voice: rumble removed, less low mid, more presence and some treble.
    {"Vox", {
        one(kQB11,       1.00f),  // On
        both(kHpfL,      0.27f),  // 50.00
        both(kOutputL,   0.49f),  // -0.30
        both(kLFreqL,    0.44f),  // 300.00
        both(kLGainL,    0.45f),  // -1.60
        both(kMFreqL,    0.33f),  // 3800.00
        both(kMGainL,    0.57f),  // 2.20
        both(kHShelfL,   1.00f),  // On
        both(kHFreqL,    0.56f),  // 14000.00
        both(kHGainL,    0.54f),  // 1.30
    }},

    // High voice: fuller low mid, softer upper mid, treble from above the sibilants.
    {"Female", {
        one(kQB11,       1.00f),  // On
        both(kHpfL,      0.45f),  // 100.00
        both(kOutputL,   0.51f),  // 0.30
        both(kLFreqL,    0.56f),  // 200.00
        both(kLGainL,    0.58f),  // 2.60
        both(kMFreqL,    0.44f),  // 3000.00
        both(kMGainL,    0.43f),  // -2.20
        both(kHFreqL,    0.11f),  // 28000.00
        both(kHGainL,    0.62f),  // 3.80
    }},

    // An overdriven small amplifier: no deep bass, boosted low mid, no treble.
    {"LowFi Bass", {
        one(kQB11,       1.00f),  // On
        one(k2x,         1.00f),  // On
        both(kDriveL,    1.00f),  // 16.00
        both(kHpfL,      0.27f),  // 50.00
        both(kOutputL,   0.39f),  // -3.50
        both(kLFreqL,    0.67f),  // 120.00
        both(kLGainL,    0.75f),  // 8.00
        both(kMFreqL,    0.89f),  // 800.00
        both(kMGainL,    0.66f),  // 5.10
        both(kHShlfL2,   1.00f),  // On
        both(kHFreqL2,   1.00f),  // 6800.00
        both(kHGainL2,   0.00f),  // -16.00
    }},

    // Kick drum: bass and attack boosted, low mid cut.
    {"Metal Kick", {
        one(kQB11,       1.00f),  // On
        one(k2x,         1.00f),  // On
        both(kOutputL,   0.39f),  // -3.50
        both(kLFreqL,    0.67f),  // 120.00
        both(kLGainL,    0.78f),  // 9.00
        both(kMFreqL,    0.22f),  // 4600.00
        both(kMGainL,    0.73f),  // 7.40
        both(kLFreqL2,   0.22f),  // 430.00
        both(kLGainL2,   0.25f),  // -8.00
    }},

    // Drum bus: more kick, less low mid, clearer cymbals.
    {"Drum group", {
        both(kLFreqL,    0.89f),  // 63.00
        both(kLGainL,    0.58f),  // 2.60
        both(kMFreqL,    1.00f),  // 680.00
        both(kMGainL,    0.43f),  // -2.20
        both(kHShelfL,   1.00f),  // On
        both(kHFreqL,    0.67f),  // 12000.00
        both(kHGainL,    0.56f),  // 1.90
    }},

    // Drums with more attack and less low mid.
    {"Drums1", {
        one(kQB11,       1.00f),  // On
        both(kHpfL,      0.09f),  // 20.00
        both(kOutputL,   0.44f),  // -1.90
        both(kLFreqL,    0.78f),  // 82.00
        both(kLGainL,    0.65f),  // 4.80
        both(kMFreqL,    0.89f),  // 800.00
        both(kMGainL,    0.40f),  // -3.20
        both(kHFreqL,    1.00f),  // 6800.00
        both(kHGainL,    0.65f),  // 4.80
    }},

    // Drums with more bass, less treble and slight saturation.
    {"Drums2", {
        one(kQB11,       1.00f),  // On
        both(kDriveL,    0.62f),  // 3.75
        both(kOutputL,   0.44f),  // -1.90
        both(kLShelfL,   1.00f),  // On
        both(kLFreqL,    0.67f),  // 120.00
        both(kLGainL,    0.60f),  // 3.20
        both(kMFreqL,    1.00f),  // 680.00
        both(kMGainL,    0.55f),  // 1.60
        both(kHShelfL,   1.00f),  // On
        both(kHFreqL,    0.67f),  // 12000.00
        both(kHGainL,    0.42f),  // -2.60
    }},

    // Slightly more bass, less upper mid and treble.
    {"Round", {
        both(kLShelfL,   1.00f),  // On
        both(kLFreqL,    0.56f),  // 200.00
        both(kLGainL,    0.55f),  // 1.60
        both(kMFreqL,    0.44f),  // 3000.00
        both(kMGainL,    0.45f),  // -1.60
        both(kHShelfL,   1.00f),  // On
        both(kHFreqL,    0.33f),  // 20000.00
        both(kHGainL,    0.45f),  // -1.60
    }},

    // A slight boost of the deepest bass and of the highest treble, for high sample rates.
    {"Mastering 96k Gentle", {
        both(kLShelfL,   1.00f),  // On
        both(kLFreqL,    0.89f),  // 63.00
        both(kLGainL,    0.52f),  // 0.60
        both(kHFreqL,    0.11f),  // 28000.00
        both(kHGainL,    0.54f),  // 1.30
    }},

    // More bass in the mid channel, more treble in the side channel, less low mid in both.
    {"Mastering 96k Open", {
        one(kMS,         1.00f),  // MidSide
        one(kQB11,       1.00f),  // On
        both(kOutputL,   0.49f),  // -0.30
        both(kLShelfL,   1.00f),  // On
        both(kLFreqL,    0.89f),  // 63.00
        one(kLGainL,     0.53f),  // 1.00
        both(kMFreqL,    1.00f),  // 680.00
        both(kMGainL,    0.48f),  // -0.60
        both(kHShelfL,   1.00f),  // On
        both(kHFreqL,    0.22f),  // 24000.00
        one(kHGainL,     0.55f),  // 1.60
        one(kHGainR,     0.59f),  // 2.90
    }},

    // As "Round", but weaker, and with more of the bass in the mid channel.
    {"Mastering round", {
        one(kMS,         1.00f),  // MidSide
        both(kLShelfL,   1.00f),  // On
        both(kLFreqL,    0.78f),  // 82.00
        one(kLGainL,     0.55f),  // 1.60
        one(kLGainR,     0.53f),  // 1.00
        both(kMFreqL,    0.44f),  // 3000.00
        both(kMGainL,    0.47f),  // -1.00
        both(kHShelfL,   1.00f),  // On
        both(kHFreqL,    0.33f),  // 20000.00
        both(kHGainL,    0.48f),  // -0.60
    }},

    {"Mastering loudness", {
        one(kMS,         1.00f),  // MidSide
        one(kQB11,       1.00f),  // On
        both(kTrfoDsL,   1.00f),  // On
        both(kAmpDsbL,   1.00f),  // On
        both(kLFreqL,    0.78f),  // 82.00
        one(kLGainL,     0.61f),  // 3.50
        one(kLGainR,     0.58f),  // 2.60
        both(kMFreqL,    1.00f),  // 680.00
        both(kMGainL,    0.49f),  // -0.30
        both(kHFreqL,    0.11f),  // 28000.00
        one(kHGainL,     0.52f),  // 0.60
        one(kHGainR,     0.55f),  // 1.60
    }},

    // An overdriven narrow band in mono.
    {"Old phone", {
        one(kChannel,    0.00f),  // Middle
        one(kQB11,       1.00f),  // On
        one(k2x,         1.00f),  // On
        both(kDriveL,    1.00f),  // 16.00
        both(kHpfL,      0.73f),  // 280.00
        both(kOutputL,   0.32f),  // -5.80
        both(kLShelfL,   1.00f),  // On
        both(kLFreqL,    0.44f),  // 300.00
        both(kLGainL,    0.20f),  // -9.60
        both(kMFreqL,    0.78f),  // 1200.00
        both(kMGainL,    0.66f),  // 5.10
        both(kHShelfL,   1.00f),  // On
        both(kHFreqL,    0.67f),  // 12000.00
        both(kHGainL,    0.00f),  // -16.00
        both(kMFreqL2,   0.44f),  // 3000.00
        both(kMGainL2,   0.75f),  // 8.00
        both(kHShlfL2,   1.00f),  // On
        both(kHFreqL2,   0.33f),  // 20000.00
        both(kHGainL2,   0.00f),  // -16.00
    }},

    // More low mid in the mid channel, more upper mid and treble in the side channel.
    {"Wide warm guitar", {
        one(kMS,         1.00f),  // MidSide
        one(kQB11,       1.00f),  // On
        both(kHpfL,      0.18f),  // 30.00
        one(kOutputL,    0.48f),  // -0.60
        one(kOutputR,    0.53f),  // 1.00
        both(kLFreqL,    0.56f),  // 200.00
        one(kLGainL,     0.57f),  // 2.20
        one(kLGainR,     0.46f),  // -1.30
        both(kMFreqL,    0.56f),  // 2500.00
        one(kMGainL,     0.47f),  // -1.00
        one(kMGainR,     0.55f),  // 1.60
        both(kHShelfL,   1.00f),  // On
        both(kHFreqL,    0.67f),  // 12000.00
        one(kHGainR,     0.56f),  // 1.90
    }},

    // An overdriven amplifier with a closed cabinet: bass and upper mid boosted, no treble.
    {"Pseudo amp", {
        one(kQB11,       1.00f),  // On
        one(k2x,         1.00f),  // On
        both(kDriveL,    1.00f),  // 16.00
        both(kHpfL,      0.36f),  // 70.00
        both(kOutputL,   0.48f),  // -0.60
        both(kLFreqL,    0.67f),  // 120.00
        both(kLGainL,    0.65f),  // 4.80
        both(kMFreqL,    0.56f),  // 2500.00
        both(kMGainL,    0.78f),  // 9.00
        both(kHShelfL,   1.00f),  // On
        both(kHFreqL,    0.44f),  // 17500.00
        both(kHGainL,    0.00f),  // -16.00
        both(kLFreqL2,   0.22f),  // 430.00
        both(kLGainL2,   0.36f),  // -4.50
        both(kHShlfL2,   1.00f),  // On
        both(kHFreqL2,   0.11f),  // 28000.00
        both(kHGainL2,   0.00f),  // -16.00
    }},

    {"Experimental Bass", {
        one(kBpsCh2,     1.00f),  // On
        one(kChannel,    1.00f),  // Side
        one(kQB11,       1.00f),  // On
        one(kLink,       0.00f),  // Off
        one(kDriveL,     1.00f),  // 16.00
        one(kDriveR,     0.00f),  // -16.00
        both(kOutputL,   0.80f),  // 9.60
        one(kTrfoDsR,    1.00f),  // On
        both(kAmpDsbL,   1.00f),  // On
    }},

    {"R101", {
        one(kMS,         1.00f),  // MidSide
        one(kQB11,       1.00f),  // On
        one(k2x,         1.00f),  // On
        one(kLink,       0.00f),  // Off
        one(k28kR,       1.00f),  // On
        one(kProcR,      0.00f),  // Off
        one(kLFreqL,     0.89f),  // 63.00
        one(kLGainL,     0.82f),  // 10.20
        both(kMFreqL2,   0.44f),  // 3000.00
        one(kMGainL2,    0.75f),  // 8.00
        one(kMGainR2,    0.73f),  // 7.40
    }},

    // Bass and treble boosted, mid cut.
    {"Tshirt", {
        one(kQB11,       1.00f),  // On
        both(kOutputL,   0.46f),  // -1.30
        both(kLShelfL,   1.00f),  // On
        both(kLFreqL,    0.67f),  // 120.00
        both(kLGainL,    0.60f),  // 3.20
        both(kMFreqL,    0.78f),  // 1200.00
        both(kMGainL,    0.42f),  // -2.60
        both(kHShelfL,   1.00f),  // On
        both(kHFreqL,    0.78f),  // 10000.00
        both(kHGainL,    0.60f),  // 3.20
    }},

    {"Init", {}},
    {"Init", {}},
    {"Init", {}},
};
// clang-format on
static_assert(std::size(kPresets) == kPresetCount, "a bank is full");

template <typename Settings>
void apply(PresetSlot& slot, const Settings& settings)
{
    for (const Setting& setting : settings) {
        setValue(slot, setting.id, setting.value);
        if (setting.span == Span::Pair)
            setValue(slot, setting.id + 1, setting.value);
    }
}

}  // namespace

const Bank& factoryBank()
{
    static const Bank bank = [] {
        Bank presets{};
        for (std::size_t i = 0; i < presets.size(); ++i) {
            setName(presets[i], kPresets[i].name);
            apply(presets[i], kDefaults);
            apply(presets[i], kPresets[i].settings);
        }
        return presets;
    }();
    return bank;
}
