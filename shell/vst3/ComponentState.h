// The component's part of a VST 3 state: the values of the selected preset.
//
// The bank is in the controller's part. Hosts that read the parameters between the two parts go on
// with what they find there, so the component's part has to tell the values too.
#pragma once

#include "params/ids/ParameterIds.h"

#include "pluginterfaces/base/ibstream.h"
#include "pluginterfaces/vst/vsttypes.h"

#include <array>
#include <optional>
#include <vector>

namespace Steinberg {
namespace Vst {

// By id, normalised; nothing for one that is not told.
using StateValues = std::array<std::optional<ParamValue>, kPresetParamCount>;

// 244 bytes, little-endian:
//   0   uint32   magic, that of banks
//   4   uint32   version, 1
//   8   uint32   number of values
//   12  float    values by id; not a number for one that is not told
std::vector<char> writeComponentState(const StateValues& values);

// Reads from the stream's present position on. Nothing is told by a stream that is empty, cut
// short, not of this format or of another version; values that are no number or lie outside 0 to 1
// are left out, and so are those of ids that this build does not have.
StateValues readComponentState(IBStream& stream);

}  // namespace Vst
}  // namespace Steinberg
