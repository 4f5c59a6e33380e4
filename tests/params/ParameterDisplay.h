// The parameters as a host shows them.
#pragma once

#include "params/ParameterClasses.h"
#include "params/ParameterTable.h"
#include "params/ids/ParameterIds.h"

#include "pluginterfaces/base/ustring.h"

#include <gtest/gtest.h>

#include <string>

inline std::string ascii(const Steinberg::Vst::TChar* text)
{
    char narrow[129] = {};
    Steinberg::UString(const_cast<Steinberg::Vst::TChar*>(text), 128).toAscii(narrow, 128);
    return narrow;
}

struct ParameterDisplay : testing::Test {
    ParameterDisplay() { addParameters(parameters); }

    std::string shown(Steinberg::Vst::ParamID id, double value)
    {
        Steinberg::Vst::String128 wide = {};
        parameters.getParameter(id)->toString(value, wide);
        return ascii(wide);
    }

    Steinberg::Vst::ParameterContainer parameters;
};
