// The traits of each parameter: its title, the kind of its values, its strip and side, and what it
// controls there. The processor, the controller and the editor use them.
#pragma once

#include "params/ids/ParameterIds.h"

#include <array>

namespace param {

// The kind of the values. A switch's is named after its default, a stepped frequency's after its
// table.
enum class Kind { SwitchOff, SwitchOn, Channel, MS, Gain, Drive, HighPass, Low, Mid, High };

enum class Strip { None, Preamp, Equaliser, Secondary };
enum class Side { None, Left, Right };

// What is controlled, in the order of the ids: in no strip, in a pre-amplifier, in an equaliser.
enum class Control {
    Power,
    BypassLeft,
    BypassRight,
    Channel,
    MidSide,
    Preamps,
    SecondaryStrips,
    Link,

    Drive,
    HighPass,
    Output,
    Boost28k,
    Phase,
    Transformer,
    Amplifier,

    Process,
    LowShelf,
    LowFrequency,
    LowGain,
    MidFrequency,
    MidGain,
    HighShelf,
    HighFrequency,
    HighGain
};

struct Row {
    ParameterId id;  // of the left one in a pair; the right one has the next id
    const char *title, *titleRight;
    Kind kind;
    Strip strip;
    Control control;
};

// Some titles are irregular (LShelfL but LShlfL2): hosts store them, so they stay.
// clang-format off
constexpr std::array<Row, 33> kRows{{
    {kPower,   "Power",   nullptr,   Kind::SwitchOn,  Strip::None,      Control::Power},
    {kBpsCh1,  "BpsCh1",  nullptr,   Kind::SwitchOff, Strip::None,      Control::BypassLeft},
    {kBpsCh2,  "BpsCh2",  nullptr,   Kind::SwitchOff, Strip::None,      Control::BypassRight},
    {kChannel, "Channel", nullptr,   Kind::Channel,   Strip::None,      Control::Channel},
    {kMS,      "MS",      nullptr,   Kind::MS,        Strip::None,      Control::MidSide},
    {kQB11,    "QB11",    nullptr,   Kind::SwitchOff, Strip::None,      Control::Preamps},
    {k2x,      "2x",      nullptr,   Kind::SwitchOff, Strip::None,      Control::SecondaryStrips},
    {kLink,    "Link",    nullptr,   Kind::SwitchOn,  Strip::None,      Control::Link},

    {kDriveL,  "DriveL",  "DriveR",  Kind::Drive,     Strip::Preamp,    Control::Drive},
    {kHpfL,    "HpfL",    "HpfR",    Kind::HighPass,  Strip::Preamp,    Control::HighPass},
    {kOutputL, "OutputL", "OutputR", Kind::Gain,      Strip::Preamp,    Control::Output},
    {k28kL,    "28kL",    "28kR",    Kind::SwitchOff, Strip::Preamp,    Control::Boost28k},
    {kPhaseL,  "PhaseL",  "PhaseR",  Kind::SwitchOff, Strip::Preamp,    Control::Phase},
    {kTrfoDsL, "TrfoDsL", "TrfoDsR", Kind::SwitchOff, Strip::Preamp,    Control::Transformer},
    {kAmpDsbL, "AmpDsbL", "AmpDsbR", Kind::SwitchOff, Strip::Preamp,    Control::Amplifier},

    {kProcL,   "ProcL",   "ProcR",   Kind::SwitchOn,  Strip::Equaliser, Control::Process},
    {kLShelfL, "LShelfL", "LShelfR", Kind::SwitchOff, Strip::Equaliser, Control::LowShelf},
    {kLFreqL,  "LFreqL",  "LFreqR",  Kind::Low,       Strip::Equaliser, Control::LowFrequency},
    {kLGainL,  "LGainL",  "LGainR",  Kind::Gain,      Strip::Equaliser, Control::LowGain},
    {kMFreqL,  "MFreqL",  "MFreqR",  Kind::Mid,       Strip::Equaliser, Control::MidFrequency},
    {kMGainL,  "MGainL",  "MGainR",  Kind::Gain,      Strip::Equaliser, Control::MidGain},
    {kHShelfL, "HShelfL", "HShelfR", Kind::SwitchOff, Strip::Equaliser, Control::HighShelf},
    {kHFreqL,  "HFreqL",  "HFreqR",  Kind::High,      Strip::Equaliser, Control::HighFrequency},
    {kHGainL,  "HGainL",  "HGainR",  Kind::Gain,      Strip::Equaliser, Control::HighGain},

    {kProcL2,  "ProcL2",  "ProcR2",  Kind::SwitchOn,  Strip::Secondary, Control::Process},
    {kLShlfL2, "LShlfL2", "LShlfR2", Kind::SwitchOff, Strip::Secondary, Control::LowShelf},
    {kLFreqL2, "LFreqL2", "LFreqR2", Kind::Low,       Strip::Secondary, Control::LowFrequency},
    {kLGainL2, "LGainL2", "LGainR2", Kind::Gain,      Strip::Secondary, Control::LowGain},
    {kMFreqL2, "MFreqL2", "MFreqR2", Kind::Mid,       Strip::Secondary, Control::MidFrequency},
    {kMGainL2, "MGainL2", "MGainR2", Kind::Gain,      Strip::Secondary, Control::MidGain},
    {kHShlfL2, "HShlfL2", "HShlfR2", Kind::SwitchOff, Strip::Secondary, Control::HighShelf},
    {kHFreqL2, "HFreqL2", "HFreqR2", Kind::High,      Strip::Secondary, Control::HighFrequency},
    {kHGainL2, "HGainL2", "HGainR2", Kind::Gain,      Strip::Secondary, Control::HighGain},
}};
// clang-format on

constexpr bool everyIdHasOneRow()
{
    unsigned next = 0;
    for (const Row& row : kRows) {
        if (row.id != next)
            return false;
        next += row.titleRight ? 2 : 1;
    }
    return next == kPresetParamCount;
}
static_assert(everyIdHasOneRow(), "a preset keeps the value of id N in slot N");

struct Traits {
    const char* title;
    Kind kind;
    Strip strip;
    Side side;
    Control control;
};

constexpr std::array<Traits, kPresetParamCount> traitsById()
{
    std::array<Traits, kPresetParamCount> traits{};
    for (const Row& row : kRows) {
        const Side side = row.titleRight ? Side::Left : Side::None;
        traits[row.id] = {row.title, row.kind, row.strip, side, row.control};
        if (row.titleRight)
            traits[row.id + 1] = {row.titleRight, row.kind, row.strip, Side::Right, row.control};
    }
    return traits;
}

inline constexpr auto kTraits = traitsById();

// `id` is below kPresetParamCount, here and in all functions below.
constexpr const Traits& traitsOf(unsigned id)
{
    return kTraits[id];
}

// The id of the same parameter on the other side; `id` belongs to a strip.
constexpr unsigned partnerOf(unsigned id)
{
    return traitsOf(id).side == Side::Left ? id + 1 : id - 1;
}

// The id of the parameter for `control` in the strip and on the side of `id`; kPresetParamCount if
// there is none.
constexpr unsigned besideOf(unsigned id, Control control)
{
    unsigned other = 0;
    while (other < kPresetParamCount
           && !(traitsOf(other).control == control && traitsOf(other).strip == traitsOf(id).strip
                && traitsOf(other).side == traitsOf(id).side))
        ++other;
    return other;
}

constexpr bool everyIdIsFoundByItsControl()
{
    for (unsigned id = 0; id < kPresetParamCount; ++id)
        if (besideOf(id, traitsOf(id).control) != id)
            return false;
    return true;
}
static_assert(everyIdIsFoundByItsControl(), "two parameters of a strip control the same");

// The id of the parameter that a knob's ring edits: the frequency of the band for a gain knob.
// Other knobs have no ring and give their own id.
constexpr unsigned ringOf(unsigned knob)
{
    switch (traitsOf(knob).control) {
    case Control::LowGain:
        return besideOf(knob, Control::LowFrequency);
    case Control::MidGain:
        return besideOf(knob, Control::MidFrequency);
    case Control::HighGain:
        return besideOf(knob, Control::HighFrequency);
    default:
        return knob;
    }
}

}  // namespace param
