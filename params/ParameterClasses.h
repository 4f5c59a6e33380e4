// The parameters that are more than a switch: how each shows its normalised value as text.
//
// A text cannot be typed into any of them: `fromString` refuses and changes nothing. Their plain
// value is the normalised one. What is shown is not always what sounds: the strips have grids of
// their own (an equaliser gain shows tenths of a decibel and acts in quarters).
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

// A stepped frequency in Hz from a table that stays the caller's; an entry not above 0 is "Off".
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

// What is heard: "Middle", "Left", "Stereo", "Right" or "Side".
class ChannelParameter : public Steinberg::Vst::Parameter {
public:
    ChannelParameter(const Steinberg::Vst::TChar* title, Steinberg::int32 flags,
                     Steinberg::Vst::ParamID id);
    void toString(double value, Steinberg::Vst::String128 text) const override;
    bool fromString(const Steinberg::Vst::TChar* text, double& value) const override;
};

// How the channels run: "Stereo" or "MidSide".
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
