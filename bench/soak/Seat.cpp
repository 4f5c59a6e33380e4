// A seat's instances, and the calls that a host makes only while it is stopped.
#include "Seat.h"

#include <tuple>

namespace {

constexpr std::array<double, 6> kRates{44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0};
constexpr std::array<std::pair<int, int>, 3> kArrangements{{{2, 2}, {1, 2}, {1, 1}}};

}  // namespace

Seat::Seat(int place, bool forTwins, Run& shared, Dice& dice)
    : number(place), twins(forTwins), run(shared)
{
    const Stopped stopped(*this);
    open(dice);
}

Seat::~Seat()
{
    const Stopped stopped(*this);
    close();
}

double Seat::anyRate(Dice& dice)
{
    return kRates[static_cast<std::size_t>(dice.below(static_cast<int>(kRates.size())))];
}

std::pair<int, int> Seat::anyArrangement(Dice& dice)
{
    const int count = static_cast<int>(kArrangements.size());
    return kArrangements[static_cast<std::size_t>(dice.below(count))];
}

Seat::Stopped::Stopped(Seat& seat) : stopped(seat)
{
    ++stopped.wanted;
    stopped.touch();
    stopped.mutex.lock();
}

Seat::Stopped::~Stopped()
{
    stopped.mutex.unlock();
    stopped.touch();
    --stopped.wanted;
}

bool Seat::tryEnter()
{
    return wanted == 0 && mutex.try_lock();
}

void Seat::open(Dice& dice)
{
    kind = !twins ? Kind::Single : dice.oneIn(2) ? Kind::UprightTwins : Kind::TurningTwins;
    setup.rate = anyRate(dice);
    setup.blockSize = dice.of(run.options.blockSizes);
    std::tie(setup.inputs, setup.outputs) = anyArrangement(dice);
    host::HostSettings settings;
    settings.sampleRate = setup.rate;
    settings.blockSize = setup.blockSize;
    for (int i = 0; i < (twins ? 2 : 1); ++i)
        plugins.push_back(std::make_unique<host::NativePlugin>(run.options.library, settings));
    for (const auto& plugin : plugins) {
        if (!plugin->setSpeakerArrangement(setup.inputs, setup.outputs))
            run.findings.add(name(), "the plug-in refuses an arrangement that it has");
        plugin->setSampleRate(setup.rate);
        plugin->setBlockSize(setup.blockSize);
        plugin->mainsOn();
    }
    note("opened", setup.rate, setup.blockSize);
    checkLatency();
    compareTwins("opening");
}

void Seat::close()
{
    for (const auto& plugin : plugins)
        plugin->mainsOff();
    plugins.clear();
    note("closed");
}

void Seat::mainsOffAndOn()
{
    for (const auto& plugin : plugins) {
        plugin->stopProcess();
        plugin->mainsOff();
        plugin->mainsOn();
        plugin->startProcess();
    }
    note("mains off and on");
}

void Seat::setRate(double hz)
{
    setup.rate = hz;
    for (const auto& plugin : plugins) {
        plugin->mainsOff();
        plugin->setSampleRate(hz);
        plugin->mainsOn();
    }
    note("rate", hz);
    checkLatency();
}

void Seat::setBlockSize(int samples)
{
    setup.blockSize = samples;
    for (const auto& plugin : plugins) {
        plugin->mainsOff();
        plugin->setBlockSize(samples);
        plugin->mainsOn();
    }
    note("block size", samples);
}

void Seat::setArrangement(int inputs, int outputs)
{
    for (const auto& plugin : plugins) {
        plugin->mainsOff();
        if (!plugin->setSpeakerArrangement(inputs, outputs))
            run.findings.add(name(), "the plug-in refuses an arrangement that it has");
        plugin->mainsOn();
        const host::EffectFields fields = plugin->fields();
        if (fields.numInputs != inputs || fields.numOutputs != outputs)
            run.findings.add(name(),
                             textOf("asked for %d inputs and %d outputs, there are %d and %d",
                                    inputs, outputs, fields.numInputs, fields.numOutputs));
    }
    setup.inputs = inputs;
    setup.outputs = outputs;
    note("arrangement", inputs, outputs);
}

void Seat::checkLatency()
{
    // From 176.4 kHz on nothing is oversampled.
    const int due = setup.rate < 176400.0 ? 96 : 0;
    for (const auto& plugin : plugins)
        if (plugin->latency() != due)
            run.findings.add(name(),
                             textOf("a latency of %d samples at %.0f Hz, not %d", plugin->latency(),
                                    setup.rate, due));
}

void Seat::compareTwins(const char* after)
{
    if (!twins || plugins.size() != 2)
        return;
    for (VstInt32 i = 0; i < kParameters; ++i) {
        const float first = plugins[0]->parameter(i), second = plugins[1]->parameter(i);
        if (first != second)
            run.findings.add(name(),
                             textOf("twins differ in parameter %d after %s: %.9g and %.9g", i,
                                    after, static_cast<double>(first),
                                    static_cast<double>(second)));
    }
    if (plugins[0]->bankChunk() != plugins[1]->bankChunk())
        run.findings.add(name(), textOf("twins differ in their state after %s", after));
}

void Seat::note(const char* what, double a, double b)
{
    events[nextEvent++ % events.size()] = {what, a, b};
}

std::string Seat::recently() const
{
    std::string text;
    for (std::size_t i = 0; i < events.size(); ++i) {
        const Event& event = events[(nextEvent + i) % events.size()];
        if (event.what)
            text += textOf("%s%s %g %g", text.empty() ? "" : ", ", event.what, event.a, event.b);
    }
    return text;
}
