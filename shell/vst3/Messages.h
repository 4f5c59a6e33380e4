// What the processor and the controller tell each other besides what passes through the host.
#pragma once

namespace Steinberg {
namespace Vst {

// From the controller: all values of the selected preset. Sent when the two are connected, when a
// project's state was loaded and when the processor asks; hosts need not pass on what the
// controller reports at such times.
constexpr const char* kValuesMessage = "ControllerValues";
constexpr const char* kValuesAttribute = "Values";  // kPresetParamCount doubles by id, each 0 to 1

// From the processor, when it becomes active.
constexpr const char* kActiveMessage = "ProcessorActive";
constexpr const char* kLatencyAttribute = "Latency";  // seconds
constexpr const char* kAsksAttribute = "Asks";        // 1: it has not heard of the values yet

// From the processor, when the host reads its state; and the controller's answer, with the values,
// which are for the state alone.
constexpr const char* kStateAskedMessage = "StateAsked";
constexpr const char* kStateValuesMessage = "StateValues";

}  // namespace Vst
}  // namespace Steinberg
