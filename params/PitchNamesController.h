// PitchNamesController: the controller half of the plug-in, which owns the parameters.
#pragma once

#include "public.sdk/source/vst/vsteditcontroller.h"

namespace Steinberg {
namespace Vst {

class PitchNamesController : public EditControllerEx1 {
public:
    // Builds the unit and the table of parameters.
    tresult PLUGIN_API initialize(FUnknown* context) SMTG_OVERRIDE;

    // Every bus belongs to the root unit.
    tresult PLUGIN_API getUnitByBus(MediaType type, BusDirection dir, int32 busIndex, int32 channel,
                                    UnitID& unitId) SMTG_OVERRIDE;
};

}  // namespace Vst
}  // namespace Steinberg
