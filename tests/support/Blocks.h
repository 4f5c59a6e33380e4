// Processing of whole signals in blocks.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

using Signal = std::vector<float>;

// Calls process(inputs, outputs, length), with one pointer for each channel, for blocks whose
// lengths cycle through the given ones. Returns the output channels.
template <typename Process>
std::vector<Signal> inBlocks(std::vector<Signal>& in, std::size_t channelsOut,
                             const std::vector<int>& lengths, const Process& process)
{
    const auto from = [](std::vector<Signal>& channels, int sample) {
        std::vector<float*> pointers;
        for (Signal& channel : channels)
            pointers.push_back(channel.data() + sample);
        return pointers;
    };
    std::vector<Signal> out(channelsOut, Signal(in[0].size(), 99.0f));
    const int total = static_cast<int>(in[0].size());
    std::size_t turn = 0;
    for (int done = 0, length = 0; done < total; done += length) {
        length = std::min(lengths[turn++ % lengths.size()], total - done);
        process(from(in, done), from(out, done), length);
    }
    return out;
}
