// The kernels for processors with AVX2.
namespace {
constexpr int kWidest = 4;  // doubles in a register
}

#include "dsp/lanes/StripPipelines.h"

const ParallelKernels kParallelAvx2[] = {parallelKernels<1>(BandModes()),
                                         parallelKernels<2>(BandModes())};
