// PitchNamesController: start-up and units.
#include "PitchNamesController.h"

#include "ParameterTable.h"

namespace Steinberg {
namespace Vst {

tresult PLUGIN_API PitchNamesController::initialize(FUnknown* context)
{
    const tresult result = EditControllerEx1::initialize(context);
    if (result != kResultOk)
        return result;
    constexpr UnitID kOwnUnit = 1;
    addUnit(new Unit(STR16("Unit1"), kOwnUnit, kRootUnitId, kNoProgramListId));
    addParameters(parameters);
    return kResultOk;
}

tresult PLUGIN_API PitchNamesController::getUnitByBus(MediaType /*type*/, BusDirection /*dir*/,
                                                      int32 /*busIndex*/, int32 /*channel*/,
                                                      UnitID& unitId)
{
    unitId = kRootUnitId;
    return kResultOk;
}

}  // namespace Vst
}  // namespace Steinberg
