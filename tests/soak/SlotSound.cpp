// The input of a slot, and the checks on its output.
#include "tests/soak/Slot.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

// With the amplifiers switched off, six bands of up to 17 dB, 16 dB of output gain and the 6 dB of
// "Middle" can add up to 124 dB. An unstable filter soon exceeds that.
constexpr float kBound = 1.6e6f;

// The slowest filter, at 5 Hz, falls by 1 / e in 32 ms: from the bound above to the level below
// within a second.
constexpr double kDecay = 3.0;  // seconds
constexpr double kQuiet = 3.5;
constexpr float kSilence = 1e-6f;

constexpr auto kSignals = static_cast<std::size_t>(TestSignal::Kind::Count);

}  // namespace

bool Slot::play()
{
    if (stopsWanted > 0 || !mutex.try_lock())
        return false;
    const std::lock_guard<std::mutex> guard(mutex, std::adopt_lock);
    if (plugins.empty())
        return true;
    ++stretch;
    const int blockSize = setup.blockSize;
    const int samples = random.oneIn(3) ? blockSize : random.between(1, 2 * blockSize);
    chooseSignal(samples / setup.rate);
    if (!quiet && random.oneIn(2))
        automate();
    for (std::vector<float>& channel : source)
        std::generate_n(channel.begin(), samples, [this] { return signal.sample(random); });
    // Changes take effect at a block's start: the first block after them is equal for twins.
    const int firstPiece = std::min({samples, blockSize, random.between(1, 60)});
    for (std::size_t instance = 0; instance < plugins.size(); ++instance)
        playTo(instance, samples, firstPiece);
    judge(samples);
    return true;
}

void Slot::chooseSignal(double seconds)
{
    if (signalLeft <= 0.0) {
        // A silence that was disturbed is not counted.
        quiet = random.oneIn(6);
        signal.kind = quiet ? TestSignal::Kind::Silence
                            : static_cast<TestSignal::Kind>(random.below(kSignals));
        signal.level = std::pow(10.0f, -3.0f * random.position());  // -60 dB to full scale
        signalLeft = quiet ? kQuiet : 2.0 * static_cast<double>(random.position());
        silenceJudged = false;
        silentFor = 0.0;
    }
    signalLeft -= seconds;
}

// Both twins get the same changes in the same order.
void Slot::automate()
{
    const bool all = random.oneIn(40);
    for (VstInt32 i = 0, count = all ? kParameters : random.between(1, 5); i < count; ++i) {
        const VstInt32 id = all ? i : random.below(kParameters);
        float value = random.position();
        if (random.oneIn(4))
            value = std::round(value * 9.0f) / 9.0f;  // includes ends and steps
        // Uniform values of these would bypass everything else most of the time.
        if (id == kPower)
            value = random.oneIn(12) ? 0.0f : 1.0f;
        if (id == kBpsCh1 || id == kBpsCh2)
            value = random.oneIn(8) ? 1.0f : 0.0f;
        if (twins && isPolarity(id))
            value = 0.0f;
        for (const auto& plugin : plugins)
            plugin->setParameter(id, value);
    }
}

void Slot::playTo(std::size_t instance, int samples, int firstPiece)
{
    for (std::size_t channel = 0; channel < 2; ++channel)
        std::copy_n(source[channel].begin(), samples, inputs[instance][channel].begin());
    for (int done = 0, piece = firstPiece; done < samples; done += piece) {
        const int left = std::min(samples - done, setup.blockSize);
        if (done > 0)
            piece = random.oneIn(4) ? left : random.between(1, left);
        playPiece(instance, done, piece);
    }
}

void Slot::playPiece(std::size_t instance, int offset, int samples)
{
    host::NativePlugin& plugin = *plugins[instance];
    Stereo& in = inputs[instance];
    Stereo& out = outputs[instance];
    float* from[2] = {in[0].data() + offset, in[1].data() + offset};
    float* to[2] = {out[0].data() + offset, out[1].data() + offset};
    // Processing in place must give the same output.
    const int shared = random.oneIn(4) ? setup.channels[0] : 0;
    std::copy_n(from, shared, to);
    if (random.oneIn(50))
        plugin.process(from, to, 0);

    const double clockBefore = clockSeconds();
    const ThreadUse before = threadUse();
    plugin.process(from, to, samples);
    const ThreadUse after = threadUse();
    const double clock = clockSeconds() - clockBefore;
    const double processor = after.processor - before.processor;
    const bool waited = after.waits != before.waits;

    const double realTime = samples / setup.rate;
    longestShare = std::max(longestShare, processor / realTime);
    // Other processes may preempt the thread at any moment, so only processor time counts; unless
    // the thread waited, which is the plug-in's doing.
    if ((waited ? clock : processor) > realTime + kBlockPatience)
        fail(textOf("a block of %d samples took %.1f ms, %.1f ms of processor time%s; its real "
                    "time is %.1f ms",
                    samples, 1e3 * clock, 1e3 * processor, waited ? ", and waited" : "",
                    1e3 * realTime));
    for (std::size_t channel = 0; channel < static_cast<std::size_t>(shared); ++channel)
        std::copy_n(from[channel], samples, out[channel].data() + offset);
    ++blocks;
}

void Slot::judge(int samples)
{
    float peak = 0.0f;
    for (std::size_t instance = 0; instance < plugins.size(); ++instance)
        for (int channel = 0; channel < setup.channels[1]; ++channel)
            for (int i = 0; i < samples; ++i) {
                const float x = outputs[instance][static_cast<std::size_t>(channel)]
                                       [static_cast<std::size_t>(i)];
                if (!std::isfinite(x))
                    return fail(
                        textOf("sample %d of output %d is %g", i, channel, static_cast<double>(x)));
                peak = std::max(peak, std::abs(x));
            }
    loudest = std::max(loudest, peak);
    if (peak > kBound)
        fail(textOf("an output of %g; the largest possible one is %g", static_cast<double>(peak),
                    static_cast<double>(kBound)));
    judgeSilence(samples / setup.rate, peak);
    if (twins)
        compareSound(samples);
}

void Slot::judgeSilence(double seconds, float peak)
{
    const unsigned touchesNow = touches;
    if (touchesNow != touchesSeen)
        silentFor = 0.0;
    touchesSeen = touchesNow;
    if (quiet && silentFor > kDecay) {
        if (peak > kSilence)
            fail(textOf("%g comes out after %.1f s of silence", static_cast<double>(peak),
                        silentFor));
        silences += silenceJudged ? 0 : 1;
        silenceJudged = true;
    }
    silentFor += seconds;
}

void Slot::compareSound(int samples)
{
    for (std::size_t channel = 0; channel < static_cast<std::size_t>(setup.channels[1]); ++channel)
        for (int i = 0; i < samples; ++i) {
            const float* const first = &outputs[0][channel][static_cast<std::size_t>(i)];
            const float* const second = &outputs[1][channel][static_cast<std::size_t>(i)];
            if (std::memcmp(first, second, sizeof(float)) != 0)
                return fail(textOf("twins differ from sample %d of %d of output %d on: %.9g and "
                                   "%.9g",
                                   i, samples, static_cast<int>(channel),
                                   static_cast<double>(*first), static_cast<double>(*second)));
        }
    twinSamples += samples;
}
