#pragma once

#include "tools/host/Plugin.h"

#include <algorithm>
#include <cstddef>
#include <vector>

using Signal = std::vector<float>;

// Processes the channels of `in` with a VST 2 plug-in in blocks of one length and returns its
// output channels.
inline std::vector<Signal> stream(host::Plugin& plugin, std::vector<Signal> in, int block = 512)
{
    const auto channelsOut = static_cast<std::size_t>(plugin.fields().numOutputs);
    std::vector<Signal> out(channelsOut, Signal(in[0].size(), 99.0f));
    for (std::size_t done = 0; done < in[0].size();) {
        const int length = std::min(block, static_cast<int>(in[0].size() - done));
        float *inputs[2] = {}, *outputs[2] = {};
        for (std::size_t c = 0; c < in.size(); ++c)
            inputs[c] = in[c].data() + done;
        for (std::size_t c = 0; c < channelsOut; ++c)
            outputs[c] = out[c].data() + done;
        plugin.process(inputs, outputs, length);
        done += static_cast<std::size_t>(length);
    }
    return out;
}
