// The parameters that are not switches: how each shows its normalised value as text.
//
// None of them accepts text: `fromString` returns false and changes nothing. Their plain value is
// the normalised one. The text may differ from the value in use, since the strips round in their
// own way: an equaliser gain is shown in tenths of a decibel and used in quarters.
#pragma once

#include "public.sdk/source/vst/vstparameters.h"

// Gain in dB, -16.00 to 16.00 in tenths.
class FilterGainParameter : public Steinberg::Vst::Parameter {
public:
    FilterGainParameter(const Steinberg::Vst::TChar* title, Steinberg::int32 flags,
                        Steinberg::Vst::ParamID id);
    void toString(double value, Steinberg::Vst::String128 text) const override;
    bool fromString(const Steinberg::Vst::TChar* text, double& value) const override;
};

// A stepped frequency in Hz from a table, which has to outlive the parameter; an entry that is not
// above 0 is shown as "Off".
class FilterFreqParameter : public Steinberg::Vst::Parameter {
public:
    FilterFreqParameter(const Steinberg::Vst::TChar* title, Steinberg::int32 flags,
                        Steinberg::Vst::ParamID id, const double* table,
                        Steinberg::int32 tableSize);
    void toString(double value, Steinberg::Vst::String128 text) const override;
    bool fromString(const Steinberg::Vst::TChar* text, double& value) const override;

private:
    const double* table;
    Steinberg::int32 tableSize;
};

// The output: "Middle", "Left", "Stereo", "Right" or "Side".
class ChannelParameter : public Steinberg::Vst::Parameter {
public:
    ChannelParameter(const Steinberg::Vst::TChar* title, Steinberg::int32 flags,
                     Steinberg::Vst::ParamID id);
    void toString(double value, Steinberg::Vst::String128 text) const override;
    bool fromString(const Steinberg::Vst::TChar* text, double& value) const override;
};

// The channels' encoding: "Stereo" or "MidSide".
class MSParameter : public Steinberg::Vst::Parameter {
public:
    MSParameter(const Steinberg::Vst::TChar* title, Steinberg::int32 flags,
                Steinberg::Vst::ParamID id);
    void toString(double value, Steinberg::Vst::String128 text) const override;
    bool fromString(const Steinberg::Vst::TChar* text, double& value) const override;
};

// Drive in dB, -16.00 to 16.00 in quarters.
class DriveParameter : public Steinberg::Vst::Parameter {
public:
    DriveParameter(const Steinberg::Vst::TChar* title, Steinberg::int32 flags,
                   Steinberg::Vst::ParamID id);
    void toString(double value, Steinberg::Vst::String128 text) const override;
    bool fromString(const Steinberg::Vst::TChar* text, double& value) const override;
};

// The latency that the processor reports, in ms; a normalised value of 1 is one second.
class LatencyParameter : public Steinberg::Vst::Parameter {
public:
    LatencyParameter();
    void toString(double value, Steinberg::Vst::String128 text) const override;
    bool fromString(const Steinberg::Vst::TChar* text, double& value) const override;
};
