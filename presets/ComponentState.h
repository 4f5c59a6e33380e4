// The component's part of a VST 3 state: the values of the selected preset.
//
// The bank is in the controller's part. Some hosts load the component's part first, then read the
// parameters and keep those values: the component's part has to contain them too.
#pragma once

#include "params/ids/ParameterIds.h"

#include "pluginterfaces/base/ibstream.h"
#include "pluginterfaces/vst/vsttypes.h"

#include <array>
#include <optional>
#include <vector>

namespace Steinberg {
namespace Vst {

// Normalised values by id; nothing where a state has no value.
using StateValues = std::array<std::optional<ParamValue>, kPresetParamCount>;

// 244 bytes, little-endian:
//   0   uint32   magic, that of banks
//   4   uint32   version, 1
//   8   uint32   number of values
//   12  float    values by id; not-a-number for nothing
std::vector<char> writeComponentState(const StateValues& values);

// Reads from the stream's present position on. A stream that is empty, truncated, of another format
// or of another version gives no values. Values that are not a number or lie outside 0 to 1 are
// left out, and so are those of ids that this build does not have.
StateValues readComponentState(IBStream& stream);

}  // namespace Vst
}  // namespace Steinberg
