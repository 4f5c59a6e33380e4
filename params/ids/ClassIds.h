// The ids of the plug-in's classes. Hosts store them in projects: they never change.
#pragma once

#include "pluginterfaces/base/funknown.h"

namespace Steinberg {
namespace Vst {

inline const FUID kProcessorId(0x6F75E1E9, 0x4807310A, 0x50C4D5B3, 0xC488DBA5);
inline const FUID kControllerId(0xB1254A6F, 0xCAF82E3F, 0x8B0C9A76, 0x7600BD0D);

}  // namespace Vst
}  // namespace Steinberg
