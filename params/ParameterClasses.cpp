#include "params/ParameterClasses.h"

#include "params/ids/ParameterIds.h"
#include "params/lookup/LookupStep.h"
#include "params/lookup/Truncate.h"

#include "pluginterfaces/base/ustring.h"

#include <charconv>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace {

void write(const char* ascii, String128 text)
{
    UString(text, 128).fromAscii(ascii);
}

// Two decimals and always a point, whatever locale the host has set.
void writeDecimals(float value, String128 text)
{
    char digits[64];
    const auto end = std::to_chars(digits, digits + sizeof digits - 1, static_cast<double>(value),
                                   std::chars_format::fixed, 2);
    *end.ptr = '\0';
    write(digits, text);
}

// A level from -16 to 16 dB, rounded to the nearest of `stepsPerDb` steps of `dbPerStep`.
void writeLevel(double value, double stepsPerDb, double dbPerStep, String128 text)
{
    const double step = truncate(value * 32.0 * stepsPerDb + 0.5) - 16.0 * stepsPerDb;
    const double db = static_cast<double>(static_cast<float>(step)) * dbPerStep;
    writeDecimals(static_cast<float>(db), text);
}

}  // namespace

FilterGainParameter::FilterGainParameter(const TChar* title, int32 flags, ParamID id)
    : Parameter(title, id, STR16("dB"), 0.5, 320, flags, kRootUnitId)
{
}

bool FilterGainParameter::fromString(const TChar* /*text*/, double& /*value*/) const
{
    return false;
}

void FilterGainParameter::toString(double value, String128 text) const
{
    writeLevel(value, 10.0, 0.1, text);
}

FilterFreqParameter::FilterFreqParameter(const TChar* title, int32 flags, ParamID id,
                                         const double* table, int32 tableSize)
    : Parameter(title, id, STR16("Hz"), 0.0, tableSize - 1, flags, kRootUnitId), table(table),
      tableSize(tableSize)
{
}

bool FilterFreqParameter::fromString(const TChar* /*text*/, double& /*value*/) const
{
    return false;
}

void FilterFreqParameter::toString(double value, String128 text) const
{
    const auto hz = static_cast<float>(lookupStep(table, tableSize, value));
    if (hz > 0.0f)
        writeDecimals(hz, text);
    else
        write("Off", text);
}

ChannelParameter::ChannelParameter(const TChar* title, int32 flags, ParamID id)
    : Parameter(title, id, nullptr, 0.5, 4, flags, kRootUnitId)
{
}

bool ChannelParameter::fromString(const TChar* /*text*/, double& /*value*/) const
{
    return false;
}

void ChannelParameter::toString(double value, String128 text) const
{
    static constexpr const char* kNames[] = {"Middle", "Left", "Stereo", "Right", "Side"};
    const int k = truncate(value * 4.0 + 0.5);
    write(k >= 0 && k < 5 ? kNames[k] : "", text);
}

MSParameter::MSParameter(const TChar* title, int32 flags, ParamID id)
    : Parameter(title, id, nullptr, 0.0, 1, flags, kRootUnitId)
{
}

bool MSParameter::fromString(const TChar* /*text*/, double& /*value*/) const
{
    return false;
}

void MSParameter::toString(double value, String128 text) const
{
    write(switchValue(value) == 0 ? "Stereo" : "MidSide", text);
}

DriveParameter::DriveParameter(const TChar* title, int32 flags, ParamID id)
    : Parameter(title, id, STR16("dB"), 0.5, 128, flags, kRootUnitId)
{
}

bool DriveParameter::fromString(const TChar* /*text*/, double& /*value*/) const
{
    return false;
}

void DriveParameter::toString(double value, String128 text) const
{
    writeLevel(value, 4.0, 0.25, text);
}

LatencyParameter::LatencyParameter()
    : Parameter(STR16("Latency"), kLatency, STR16("ms"), 0.0, 0, ParameterInfo::kIsReadOnly,
                kRootUnitId)
{
}

bool LatencyParameter::fromString(const TChar* /*text*/, double& /*value*/) const
{
    return false;
}

void LatencyParameter::toString(double value, String128 text) const
{
    writeDecimals(static_cast<float>(value * 1000.0), text);
}
