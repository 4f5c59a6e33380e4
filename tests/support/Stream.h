#pragma once

#include "tests/support/Blocks.h"
#include "tools/host/Plugin.h"

// Processes the channels of `in` with a VST 2 plug-in in blocks of one length and returns its
// output channels.
inline std::vector<Signal> stream(host::Plugin& plugin, std::vector<Signal> in, int block = 512)
{
    const auto channelsOut = static_cast<std::size_t>(plugin.fields().numOutputs);
    return inBlocks(in, channelsOut, {block}, [&](auto inputs, auto outputs, int length) {
        inputs.resize(2);
        plugin.process(inputs.data(), outputs.data(), length);
    });
}
