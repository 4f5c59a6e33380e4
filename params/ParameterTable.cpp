// The table of parameters: number, title as hosts store it, kind, default.
#include "ParameterTable.h"

#include "FrequencySteps.h"
#include "ParameterClasses.h"
#include "ParameterIds.h"

#include "pluginterfaces/base/ustring.h"

#include <array>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

enum class Kind { SwitchOff, SwitchOn, Channel, MS, Gain, Drive, Hpf, Low, Mid, High };

struct Row {
    ParameterId id;
    const char* title;
    Kind kind;
};

// Titles are irregular here and there (LShelfL but LShlfL2); hosts have stored them so.
// clang-format off
constexpr std::array<Row, kPresetParamCount> kRows{{
    {kPower,   "Power",   Kind::SwitchOn},
    {kBpsCh1,  "BpsCh1",  Kind::SwitchOff}, {kBpsCh2,  "BpsCh2",  Kind::SwitchOff},
    {kChannel, "Channel", Kind::Channel},
    {kMS,      "MS",      Kind::MS},
    {kQB11,    "QB11",    Kind::SwitchOff},
    {k2x,      "2x",      Kind::SwitchOff},
    {kLink,    "Link",    Kind::SwitchOn},
    {kDriveL,  "DriveL",  Kind::Drive},     {kDriveR,  "DriveR",  Kind::Drive},
    {kHpfL,    "HpfL",    Kind::Hpf},       {kHpfR,    "HpfR",    Kind::Hpf},
    {kOutputL, "OutputL", Kind::Gain},      {kOutputR, "OutputR", Kind::Gain},
    {k28kL,    "28kL",    Kind::SwitchOff}, {k28kR,    "28kR",    Kind::SwitchOff},
    {kPhaseL,  "PhaseL",  Kind::SwitchOff}, {kPhaseR,  "PhaseR",  Kind::SwitchOff},
    {kTrfoDsL, "TrfoDsL", Kind::SwitchOff}, {kTrfoDsR, "TrfoDsR", Kind::SwitchOff},
    {kAmpDsbL, "AmpDsbL", Kind::SwitchOff}, {kAmpDsbR, "AmpDsbR", Kind::SwitchOff},

    {kProcL,   "ProcL",   Kind::SwitchOn},  {kProcR,   "ProcR",   Kind::SwitchOn},
    {kLShelfL, "LShelfL", Kind::SwitchOff}, {kLShelfR, "LShelfR", Kind::SwitchOff},
    {kLFreqL,  "LFreqL",  Kind::Low},       {kLFreqR,  "LFreqR",  Kind::Low},
    {kLGainL,  "LGainL",  Kind::Gain},      {kLGainR,  "LGainR",  Kind::Gain},
    {kMFreqL,  "MFreqL",  Kind::Mid},       {kMFreqR,  "MFreqR",  Kind::Mid},
    {kMGainL,  "MGainL",  Kind::Gain},      {kMGainR,  "MGainR",  Kind::Gain},
    {kHShelfL, "HShelfL", Kind::SwitchOff}, {kHShelfR, "HShelfR", Kind::SwitchOff},
    {kHFreqL,  "HFreqL",  Kind::High},      {kHFreqR,  "HFreqR",  Kind::High},
    {kHGainL,  "HGainL",  Kind::Gain},      {kHGainR,  "HGainR",  Kind::Gain},

    {kProcL2,  "ProcL2",  Kind::SwitchOn},  {kProcR2,  "ProcR2",  Kind::SwitchOn},
    {kLShlfL2, "LShlfL2", Kind::SwitchOff}, {kLShlfR2, "LShlfR2", Kind::SwitchOff},
    {kLFreqL2, "LFreqL2", Kind::Low},       {kLFreqR2, "LFreqR2", Kind::Low},
    {kLGainL2, "LGainL2", Kind::Gain},      {kLGainR2, "LGainR2", Kind::Gain},
    {kMFreqL2, "MFreqL2", Kind::Mid},       {kMFreqR2, "MFreqR2", Kind::Mid},
    {kMGainL2, "MGainL2", Kind::Gain},      {kMGainR2, "MGainR2", Kind::Gain},
    {kHShlfL2, "HShlfL2", Kind::SwitchOff}, {kHShlfR2, "HShlfR2", Kind::SwitchOff},
    {kHFreqL2, "HFreqL2", Kind::High},      {kHFreqR2, "HFreqR2", Kind::High},
    {kHGainL2, "HGainL2", Kind::Gain},      {kHGainR2, "HGainR2", Kind::Gain},
}};
// clang-format on

constexpr bool idsAreRowNumbers()
{
    for (unsigned i = 0; i < kRows.size(); ++i)
        if (kRows[i].id != i)
            return false;
    return true;
}
static_assert(idsAreRowNumbers(), "a preset keeps the value of id N in slot N");

template <std::size_t N>
Parameter* frequencyParameter(const TChar* title, ParamID id, const std::array<double, N>& table)
{
    return new FilterFreqParameter(title, ParameterInfo::kCanAutomate, id, table.data(),
                                   static_cast<int32>(N));
}

Parameter* displayParameter(const Row& row, const TChar* title)
{
    constexpr int32 flags = ParameterInfo::kCanAutomate;
    switch (row.kind) {
    case Kind::Channel:
        return new ChannelParameter(title, flags, row.id);
    case Kind::MS:
        return new MSParameter(title, flags, row.id);
    case Kind::Gain:
        return new FilterGainParameter(title, flags, row.id);
    case Kind::Drive:
        return new DriveParameter(title, flags, row.id);
    case Kind::Hpf:
        return frequencyParameter(title, row.id, kHighPassStepsHz);
    case Kind::Low:
        return frequencyParameter(title, row.id, kLowStepsHz);
    case Kind::Mid:
        return frequencyParameter(title, row.id, kMidStepsHz);
    case Kind::High:
        return frequencyParameter(title, row.id, kHighStepsHz);
    case Kind::SwitchOff:
    case Kind::SwitchOn:
        break;
    }
    return nullptr;
}

}  // namespace

void addParameters(ParameterContainer& parameters)
{
    for (const Row& row : kRows) {
        String128 title = {};
        UString(title, 128).fromAscii(row.title);
        if (Parameter* parameter = displayParameter(row, title)) {
            parameters.addParameter(parameter);
            continue;
        }
        const double initial = row.kind == Kind::SwitchOn ? 1.0 : 0.0;
        parameters.addParameter(title, nullptr, 1, initial, ParameterInfo::kCanAutomate, row.id,
                                kRootUnitId);
    }
    parameters.addParameter(new LatencyParameter);
}
