// The table of the plug-in's 59 parameters.
#pragma once

#include "public.sdk/source/vst/vstparameters.h"

// Adds the parameters 0 to 57 and the latency (59) in ascending order, all in the root unit.
void addParameters(Steinberg::Vst::ParameterContainer& parameters);
