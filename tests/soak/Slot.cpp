#include "tests/soak/Slot.h"

#include <algorithm>

Slot::Slot(int place, bool forTwins, Run& shared, Random& usersRandom)
    : number(place), twins(forTwins), run(shared),
      random(shared.seed, static_cast<std::uint32_t>(1000 + place))
{
    const std::vector<int>& sizes = run.blockSizes;
    const auto longest =
        static_cast<std::size_t>(2 * *std::max_element(sizes.begin(), sizes.end()));
    for (Stereo* const stereo : {&source, &inputs[0], &inputs[1], &outputs[0], &outputs[1]})
        for (std::vector<float>& channel : *stereo)
            channel.resize(longest);
    const Stopped stopped(*this);
    open(usersRandom);
}

Slot::~Slot()
{
    const Stopped stopped(*this);
    close();
}

void Slot::open(Random& usersRandom)
{
    for (int i = 0; i < (twins ? 2 : 1); ++i)
        plugins.push_back(std::make_unique<host::NativePlugin>(run.library));
    change({usersRandom.of(kRates), usersRandom.of(run.blockSizes), usersRandom.of(kChannels)});
}

void Slot::close()
{
    editor.reset();
    for (const auto& plugin : plugins)
        plugin->mainsOff();
    plugins.clear();
}

void Slot::change(const Setup& wanted)
{
    setup = wanted;
    // From 176.4 kHz on nothing is oversampled.
    const int latency = setup.rate < 176400.0 ? 96 : 0;
    for (const auto& plugin : plugins) {
        plugin->stopProcess();
        plugin->mainsOff();
        if (!plugin->setSpeakerArrangement(setup.channels[0], setup.channels[1]))
            fail("the plug-in refuses an arrangement that it supports");
        plugin->setSampleRate(setup.rate);
        plugin->setBlockSize(setup.blockSize);
        plugin->mainsOn();
        plugin->startProcess();
        const host::EffectFields fields = plugin->fields();
        if (fields.numInputs != setup.channels[0] || fields.numOutputs != setup.channels[1])
            fail(textOf("there are %d inputs and %d outputs", fields.numInputs, fields.numOutputs));
        if (fields.initialDelay != latency)
            fail(textOf("a latency of %d samples, not %d", fields.initialDelay, latency));
    }
    compareTwins("a change of the setup");
}

void Slot::compareTwins(const char* after)
{
    if (twins && plugins[0]->bankChunk() != plugins[1]->bankChunk())
        fail(textOf("twins differ in their state after %s", after));
}

std::string Slot::step() const
{
    return textOf("slot %d (%s, %.0f Hz, blocks of %d, %d to %d), stretch %lld of %s", number,
                  twins ? "twins" : "single", setup.rate, setup.blockSize, setup.channels[0],
                  setup.channels[1], stretch, kSignalNames[static_cast<int>(signal.kind)]);
}
