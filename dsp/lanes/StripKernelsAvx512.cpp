// The kernels for processors with AVX-512.
namespace {
constexpr int kWidest = 8;  // doubles in a register
}

#include "dsp/lanes/StripPipelines.h"

const ParallelKernels kParallelAvx512[] = {parallelKernels<1>(BandModes()),
                                           parallelKernels<2>(BandModes())};
