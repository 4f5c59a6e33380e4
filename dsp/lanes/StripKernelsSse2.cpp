// The kernels for every x86-64 processor.
namespace {
constexpr int kWidest = 2;  // doubles in a register
}

#include "dsp/lanes/StripPipelines.h"

const LaneKernels kOneLane = laneKernels<1>(BandModes());
const LaneKernels kTwoLanes = laneKernels<2>(BandModes());
