// One stretch at a time, and the checks on its sound.
#include "Player.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

// With the amplifiers switched off, six bands of up to 17 dB, 16 dB of output gain and the 6 dB of
// "Middle" can stand on top of each other: 124 dB. What grows without bound passes that soon.
constexpr float kBound = 1.6e6f;

// The slowest filter, at 5 Hz, falls by 1 / e in 32 ms: from the bound above to the level below
// within a second.
constexpr double kDecay = 3.0;  // seconds
constexpr double kQuiet = 3.5;
constexpr float kSilence = 1e-6f;

// Up to this length a block is one round of the plug-in's inner loop.
constexpr int kRound = 16;

}  // namespace

Player::Player(Seat& ownSeat, Run& shared)
    : seat(ownSeat), run(shared),
      dice(shared.options.seed, static_cast<std::uint32_t>(1000 + ownSeat.number)), signal(dice)
{
    const std::vector<int>& sizes = run.options.blockSizes;
    const auto longest =
        static_cast<std::size_t>(2 * *std::max_element(sizes.begin(), sizes.end()));
    for (std::vector<float>& channel : source)
        channel.resize(longest);
    for (auto* side : {&inputs, &outputs})
        for (Stereo& stereo : *side)
            for (std::vector<float>& channel : stereo)
                channel.resize(longest);
}

bool Player::play(BlockTimes& times)
{
    if (!seat.tryEnter())
        return false;
    if (!seat.plugins.empty()) {
        ++stretch;
        const int blockSize = seat.setup.blockSize;
        const int samples = dice.oneIn(3) ? blockSize : dice.between(1, 2 * blockSize);
        chooseSignal(samples);
        if (!seat.quiet && dice.oneIn(2))
            automate();
        signal.fill(source[0].data(), source[1].data(), samples);
        // Of a stretch the first piece is the same for twins: a waiting change of polarity looks
        // for the quietest sample of the block that it comes with.
        const int least = seat.kind == Kind::TurningTwins && blockSize > kRound ? kRound + 1 : 1;
        const int firstPiece = std::min({samples, blockSize, dice.between(least, least + 60)});
        for (std::size_t instance = 0; instance < seat.plugins.size(); ++instance)
            playTo(instance, samples, firstPiece, times);
        judge(samples);
        run.tally.add(Deed::Sample, samples);
    }
    seat.leave();
    return true;
}

void Player::chooseSignal(int samples)
{
    const double seconds = samples / seat.setup.rate;
    if (signalLeft <= 0.0) {
        // Ends of silences that were disturbed count as none.
        const bool waitForTheEnd = dice.oneIn(6);
        if (waitForTheEnd)
            signal.fallSilent();
        else
            signal.change(seat.setup.rate);
        signalLeft = waitForTheEnd ? kQuiet : 2.0 * static_cast<double>(dice.position());
        seat.quiet = waitForTheEnd;
        silenceJudged = false;
        silentFor = 0.0;
        seat.note(signal.name());
    }
    signalLeft -= seconds;
}

// Both twins get the same, in the same order.
void Player::automate()
{
    int count = dice.oneIn(40) ? kParameters : dice.between(1, 5);
    const bool all = count == kParameters;
    for (VstInt32 i = 0; count > 0; ++i, --count) {
        const VstInt32 id = all ? i : dice.below(kParameters);
        float value = dice.position();
        if (dice.oneIn(4))
            value = std::round(value * 9.0f) / 9.0f;  // ends and steps included
        // Left to themselves these would keep all else from being heard most of the time.
        if (id == kPower)
            value = dice.oneIn(12) ? 0.0f : 1.0f;
        if (id == kBpsCh1 || id == kBpsCh2)
            value = dice.oneIn(8) ? 1.0f : 0.0f;
        if (seat.kind == Kind::UprightTwins && isPolarity(id))
            value = 0.0f;
        for (const auto& plugin : seat.plugins)
            plugin->setParameter(id, value);
        seat.note("parameter", id, static_cast<double>(value));
        run.tally.add(Deed::AutomationOfAudio);
    }
}

void Player::playTo(std::size_t instance, int samples, int firstPiece, BlockTimes& times)
{
    const auto bytes = static_cast<std::size_t>(samples) * sizeof(float);
    for (std::size_t channel = 0; channel < 2; ++channel)
        std::memcpy(inputs[instance][channel].data(), source[channel].data(), bytes);
    // A long block beside a short one turns the polarity in another place of the chain.
    const bool inLongPieces = seat.kind == Kind::TurningTwins && seat.setup.blockSize > kRound;
    processPiece(instance, 0, firstPiece, times);
    for (int done = firstPiece; done < samples;) {
        const int piece = nextPiece(samples - done, inLongPieces ? kRound + 1 : 1);
        processPiece(instance, done, piece, times);
        done += piece;
    }
}

// By chance; or, where pieces must have a least length and none would be left for the next one,
// whole blocks, which are the same for both twins.
int Player::nextPiece(int left, int least)
{
    const int blockSize = seat.setup.blockSize;
    if (least > 1 && blockSize < 2 * least)
        return std::min(left, blockSize);
    if (left < 2 * least || (left <= blockSize && dice.oneIn(4)))
        return left;
    return dice.between(least, std::min(blockSize, left - least));
}

void Player::processPiece(std::size_t instance, int offset, int samples, BlockTimes& times)
{
    host::NativePlugin& plugin = *seat.plugins[instance];
    Stereo& in = inputs[instance];
    Stereo& out = outputs[instance];
    float* from[2] = {in[0].data() + offset, in[1].data() + offset};
    float* to[2] = {out[0].data() + offset, out[1].data() + offset};
    // Where input and output are one memory, the sound must be the same.
    const bool inPlace = dice.oneIn(4);
    if (inPlace)
        for (int channel = 0; channel < seat.setup.inputs; ++channel)
            to[channel] = from[channel];
    if (dice.oneIn(50))
        plugin.process(from, to, 0);

    const Effortmeter meter;
    plugin.process(from, to, samples);
    const Effort effort = meter.stop();

    if (!times.add(samples, seat.setup.rate, effort))
        run.findings.add(step(),
                         textOf("a block of %d samples took %.1f ms, %.1f ms of that on a processor"
                                "%s; its real time is %.1f ms",
                                samples, 1e3 * effort.clock, 1e3 * effort.processor,
                                effort.waited ? ", and waited" : "",
                                1e3 * samples / seat.setup.rate));
    if (inPlace)
        for (std::size_t channel = 0; channel < static_cast<std::size_t>(seat.setup.inputs);
             ++channel)
            std::copy_n(from[channel], samples, out[channel].data() + offset);
    run.tally.add(Deed::Block);
}

void Player::judge(int samples)
{
    const auto channels = static_cast<std::size_t>(seat.setup.outputs);
    float loudest = 0.0f;
    for (std::size_t instance = 0; instance < seat.plugins.size(); ++instance)
        for (std::size_t channel = 0; channel < channels; ++channel)
            for (int i = 0; i < samples; ++i) {
                const float x = outputs[instance][channel][static_cast<std::size_t>(i)];
                if (!std::isfinite(x)) {
                    run.findings.add(step(),
                                     textOf("sample %d of output %d is %g", i,
                                            static_cast<int>(channel), static_cast<double>(x)));
                    return;
                }
                loudest = std::max(loudest, std::abs(x));
            }
    loudestEver = std::max(loudestEver, loudest);
    if (loudest > kBound)
        run.findings.add(step(),
                         textOf("an output of %g, where at most %g can be right",
                                static_cast<double>(loudest), static_cast<double>(kBound)));

    const unsigned touches = seat.touched();
    if (touches != touchesSeen)
        silentFor = 0.0;
    touchesSeen = touches;
    if (seat.quiet && silentFor > kDecay) {
        if (loudest > kSilence)
            run.findings.add(step(),
                             textOf("%g comes out after %.1f s of silence",
                                    static_cast<double>(loudest), silentFor));
        if (!silenceJudged)
            run.tally.add(Deed::Silence);
        silenceJudged = true;
    }
    silentFor += samples / seat.setup.rate;
    compareTwins(samples);
}

void Player::compareTwins(int samples)
{
    if (seat.plugins.size() != 2)
        return;
    const auto channels = static_cast<std::size_t>(seat.setup.outputs);
    const auto bytes = static_cast<std::size_t>(samples) * sizeof(float);
    for (std::size_t channel = 0; channel < channels; ++channel) {
        const float* const first = outputs[0][channel].data();
        const float* const second = outputs[1][channel].data();
        if (std::memcmp(first, second, bytes) == 0)
            continue;
        int i = 0;
        while (std::memcmp(first + i, second + i, sizeof(float)) == 0)
            ++i;
        run.findings.add(step(),
                         textOf("twins differ from sample %d of %d of output %d on: %.9g "
                                "and %.9g",
                                i, samples, static_cast<int>(channel),
                                static_cast<double>(first[i]), static_cast<double>(second[i])));
        return;
    }
    run.tally.add(Deed::TwinSample, samples);
}

std::string Player::step() const
{
    return textOf("seat %d (%s, %.0f Hz, blocks of %d, %d to %d), stretch %lld of %s [",
                  seat.number, nameOf(seat.kind), seat.setup.rate, seat.setup.blockSize,
                  seat.setup.inputs, seat.setup.outputs, stretch, signal.name())
        + seat.recently() + "]";
}
