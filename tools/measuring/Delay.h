// Measures the delay of an impulse.
#pragma once

#include "tools/audio/PluginRun.h"

#include <vector>

namespace tool {

struct Delay {
    int reported;  // samples, by the plug-in
    int measured;  // samples; if the channels differ, of the one that is not as reported
};

// From silence, after the ramps of the parameters. `rate` in Hz; the plug-in must delay by less
// than 900 samples.
Delay measureDelay(host::Plugin& plugin, double rate, int blockSize,
                   const std::vector<Assignment>& settings);

}  // namespace tool
