#include "tools/audio/PluginRun.h"

#include "tools/common/ToolError.h"
#include "tools/host/HostError.h"

#include <algorithm>

namespace tool {

namespace {

std::string channelsText(int count)
{
    return count == 1 ? "mono" : "stereo";
}

}  // namespace

PluginRun::PluginRun(host::Plugin& plugin, double rate, int blockSize, int inputs, int outputs)
    : plugin(plugin), blockSize(blockSize), inputCount(inputs), outputCount(outputs)
{
    const bool accepted = plugin.setSpeakerArrangement(inputs, outputs);
    const host::EffectFields fields = plugin.fields();
    // A plug-in with fixed channels may refuse the call although it has the wanted channels.
    if (fields.numInputs != inputs || fields.numOutputs != outputs)
        throw ToolError("the plug-in does not take " + channelsText(inputs) + " in and "
                        + channelsText(outputs) + " out" + (accepted ? ", though it said so" : ""));
    plugin.setSampleRate(rate);
    plugin.setBlockSize(blockSize);
    plugin.mainsOn();
    plugin.startProcess();
}

PluginRun::~PluginRun()
{
    try {
        plugin.stopProcess();
        plugin.mainsOff();
    } catch (const host::HostError&) {
        // The helper process has ended; an earlier call has reported that.
    }
}

void PluginRun::set(const std::vector<Assignment>& assignments)
{
    for (const Assignment& assignment : assignments)
        plugin.setParameter(assignment.index, assignment.value);
}

Channels PluginRun::process(Channels input)
{
    const std::size_t length = input.front().size();
    Channels output(static_cast<std::size_t>(outputCount), std::vector<float>(length));
    std::vector<float*> in(input.size()), out(output.size());
    for (std::size_t start = 0; start < length;) {
        const std::size_t count = std::min(length - start, static_cast<std::size_t>(blockSize));
        for (std::size_t channel = 0; channel < in.size(); ++channel)
            in[channel] = input[channel].data() + start;
        for (std::size_t channel = 0; channel < out.size(); ++channel)
            out[channel] = output[channel].data() + start;
        plugin.process(in.data(), out.data(), static_cast<int>(count));
        start += count;
    }
    return output;
}

void PluginRun::processSilence(std::int64_t samples)
{
    while (samples > 0) {
        const std::int64_t count = std::min<std::int64_t>(samples, blockSize);
        process(Channels(static_cast<std::size_t>(inputCount),
                         std::vector<float>(static_cast<std::size_t>(count))));
        samples -= count;
    }
}

}  // namespace tool
