// PluginRun: a plug-in that is switched on with given channels, sample rate and block size.
#pragma once

#include "tools/common/ParameterText.h"
#include "tools/host/Plugin.h"

#include <cstdint>
#include <vector>

namespace tool {

// One vector per channel, all of the same length.
using Channels = std::vector<std::vector<float>>;

class PluginRun {
public:
    // Switches the plug-in on. `rate` in Hz. Throws ToolError when it refuses the channels.
    PluginRun(host::Plugin& plugin, double rate, int blockSize, int inputs, int outputs);
    // Switches it off.
    ~PluginRun();
    PluginRun(const PluginRun&) = delete;
    PluginRun& operator=(const PluginRun&) = delete;

    int latency() { return plugin.latency(); }  // samples
    int inputs() const { return inputCount; }
    int outputs() const { return outputCount; }

    void set(const std::vector<Assignment>& assignments);
    // Processes any number of samples in blocks. The output has the input's length and is late by
    // the latency. The input is taken by value, since plug-ins may change it.
    Channels process(Channels input);
    void processSilence(std::int64_t samples);

private:
    host::Plugin& plugin;
    int blockSize;
    int inputCount;
    int outputCount;
};

}  // namespace tool
