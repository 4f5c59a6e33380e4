// The message by which the controller tells the processor all values of the selected preset: when
// the two are connected and when a project's state was loaded. Hosts need not pass on what the
// controller reports at such times.
#pragma once

namespace Steinberg {
namespace Vst {

constexpr const char* kControllerValuesMessage = "ControllerValues";
// Binary: kPresetParamCount doubles in order of id, each 0 to 1.
constexpr const char* kControllerValuesAttribute = "Values";

}  // namespace Vst
}  // namespace Steinberg
