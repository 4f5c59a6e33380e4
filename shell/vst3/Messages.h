// The messages between the processor and the controller.
#pragma once

namespace Steinberg {
namespace Vst {

// From the controller: all values of the selected preset. Sent when the two are connected, after a
// project's state was loaded, and when the processor asks for them; at these times some hosts do
// not pass on values that the controller reports.
constexpr const char* kValuesMessage = "ControllerValues";
constexpr const char* kValuesAttribute = "Values";  // kPresetParamCount doubles by id, each 0 to 1

// From the processor, when it becomes active.
constexpr const char* kActiveMessage = "ProcessorActive";
constexpr const char* kLatencyAttribute = "Latency";  // seconds
constexpr const char* kAsksAttribute = "Asks";        // 1: the processor needs the values

// From the processor, when the host reads its state; and the controller's answer with the values,
// which the processor uses for the state only.
constexpr const char* kStateAskedMessage = "StateAsked";
constexpr const char* kStateValuesMessage = "StateValues";

}  // namespace Vst
}  // namespace Steinberg
