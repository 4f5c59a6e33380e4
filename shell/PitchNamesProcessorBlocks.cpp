// One block of audio, from the host's input buffers to its output buffers, in sub-blocks of 16
// samples.
#include "shell/PitchNamesProcessor.h"

#include <algorithm>
#include <cmath>

namespace Steinberg {
namespace Vst {

namespace {

constexpr int kSubBlock = 16;

// The host's samples as doubles. One that is not finite would stay in the filters for good and
// counts as silence.
void widen(const Sample32* in, double* out, int count)
{
    for (int i = 0; i < count; ++i)
        out[i] = std::isfinite(in[i]) ? static_cast<double>(in[i]) : 0.0;
}

// Unscaled on the way in, halved on the way out.
void encodeMidSide(double* l, double* r, int count)
{
    for (int i = 0; i < count; ++i) {
        const double mid = l[i] + r[i];
        const double side = l[i] - r[i];
        l[i] = mid;
        r[i] = side;
    }
}

void decodeMidSide(double* mid, double* side, int count)
{
    for (int i = 0; i < count; ++i) {
        const double l = (mid[i] + side[i]) * 0.5;
        const double r = (mid[i] - side[i]) * 0.5;
        mid[i] = l;
        side[i] = r;
    }
}

void scale(double* x, double factor, int count)
{
    for (int i = 0; i < count; ++i)
        x[i] *= factor;
}

// The polarity stage of two channels, with the strips' operations for that kind of buffer. Two
// changes that wait at the same time happen at the same sample. Null for a strip not in use.
template <typename Sample>
void applyPolarity(StripProcessorQB9* left, StripProcessorQB9* right, Sample* l, Sample* r, int n,
                   void (StripProcessorQB9::*single)(Sample*, int),
                   void (StripProcessorQB9::*linked)(Sample*, Sample*, int*, int*, int))
{
    if (left && right && left->phaseChangePending && right->phaseChangePending) {
        (left->*linked)(l, r, &left->inverted, &right->inverted, n);
        left->phaseChangePending = 0;
        right->phaseChangePending = 0;
        return;
    }
    if (left)
        (left->*single)(l, n);
    if (right)
        (right->*single)(r, n);
}

}  // namespace

void PitchNamesProcessor::processStereo(Sample32** inputs, Sample32** outputs, int32 n)
{
    const Sample32* inL = inputs[0];
    const Sample32* inR = stereoIn ? inputs[1] : inputs[0];
    Sample32* outL = outputs[0];
    Sample32* outR = outputs[1];
    const SubBlock work{workL, workR};

    startBlockPolarity(inputs, n);
    for (int done = 0; done < n;) {
        const int sub = std::min(kSubBlock, n - done);
        widen(inL + done, workL, sub);
        widen(inR + done, workR, sub);
        const int count = oversampling.raiseRate(oversampleMode, work, sub);
        if (midSideOn)
            encodeMidSide(workL, workR, count);
        runStripsStereo(workL, workR, count);
        if (midSideOn)
            decodeMidSide(workL, workR, count);
        oversampling.lowerRate(oversampleMode, work, count);
        writeStereo(outL + done, outR + done, sub);
        done += sub;
    }
}

// A mono signal is its own mid channel: in Mid/Side operation the strips see it doubled.
void PitchNamesProcessor::processMono(Sample32** inputs, Sample32** outputs, int32 n)
{
    const Sample32* in = inputs[0];
    Sample32* out = outputs[0];
    const SubBlock work{workL, nullptr};

    startBlockPolarity(inputs, n);
    for (int done = 0; done < n;) {
        const int sub = std::min(kSubBlock, n - done);
        widen(in + done, workL, sub);
        const int count = oversampling.raiseRate(oversampleMode, work, sub);
        if (midSideOn)
            scale(workL, 2.0, count);
        runStripsMono(workL, count);
        if (midSideOn)
            scale(workL, 0.5, count);
        oversampling.lowerRate(oversampleMode, work, count);
        writeMono(out + done, sub);
        done += sub;
    }
}

// The sound as it came, without delay.
void PitchNamesProcessor::passStereo(Sample32** inputs, Sample32** outputs, int32 n)
{
    // Both are read before either is written: input and output may be the same memory, crosswise.
    for (int32 i = 0; i < n; ++i) {
        const Sample32 l = inputs[0][i];
        const Sample32 r = inputs[stereoIn ? 1 : 0][i];
        outputs[0][i] = l;
        outputs[1][i] = r;
    }
}

void PitchNamesProcessor::passMono(Sample32** inputs, Sample32** outputs, int32 n)
{
    std::copy_n(inputs[0], n, outputs[0]);
}

// Polarity flips at the quietest sample there is. In a longer block outside Mid/Side operation that
// is looked for in the whole block, in the host's own input buffers, which change sign in place.
// Otherwise the strips look for it in each sub-block.
void PitchNamesProcessor::startBlockPolarity(Sample32** inputs, int32 n)
{
    phaseDoneForBlock = 0;
    if (midSideOn || n <= kSubBlock)
        return;
    phaseDoneForBlock = 1;
    if (!powerOn)
        return;
    // Without a channel of its own the right strip has nothing to flip, and waits.
    applyPolarity(leftChain().preamp, stereoIn ? rightChain().preamp : nullptr, inputs[0],
                  stereoIn ? inputs[1] : nullptr, n, &StripProcessorQB9::applyPhaseFloat,
                  &StripProcessorQB9::applyPhaseLinkedFloat);
}

// What a channel's samples go through behind the polarity stage; a bypassed channel has no strips.
StripChain PitchNamesProcessor::leftChain() const
{
    if (!channel1Active)
        return {};
    return {preampOn ? preampStripL.get() : nullptr, eqStripL.get(),
            secondaryOn ? eqStripL2.get() : nullptr};
}

StripChain PitchNamesProcessor::rightChain() const
{
    if (!channel2Active)
        return {};
    return {preampOn ? preampStripR.get() : nullptr, eqStripR.get(),
            secondaryOn ? eqStripR2.get() : nullptr};
}

void PitchNamesProcessor::runStripsStereo(double* l, double* r, int count)
{
    if (!powerOn)
        return;
    const StripChain left = leftChain();
    const StripChain right = rightChain();
    if (!phaseDoneForBlock)
        applyPolarity(left.preamp, right.preamp, l, r, count, &StripProcessorQB9::applyPhase,
                      &StripProcessorQB9::applyPhaseLinked);
    processStrips(processingForm, left, right, l, r, count);
}

void PitchNamesProcessor::runStripsMono(double* x, int count)
{
    if (!powerOn)
        return;
    const StripChain chain = leftChain();
    if (!phaseDoneForBlock && chain.preamp)
        chain.preamp->applyPhase(x, count);
    processStrips(processingForm, chain, {}, x, nullptr, count);
}

// What is heard of the two channels; sums and differences are not scaled.
void PitchNamesProcessor::writeStereo(Sample32* outL, Sample32* outR, int count) const
{
    enum { kMiddle = 0, kLeft = 1, kRight = 3, kSide = 4 };
    const int mode = powerOn ? channelMode : 2;
    for (int i = 0; i < count; ++i) {
        double l = workL[i];
        double r = workR[i];
        switch (mode) {
        case kMiddle:
            l = r = l + r;
            break;
        case kLeft:
            r = l;
            break;
        case kRight:
            l = r;
            break;
        case kSide:
            l = r = l - r;
            break;
        default:
            break;
        }
        outL[i] = static_cast<Sample32>(l);
        outR[i] = static_cast<Sample32>(r);
    }
}

// The sum of two equal channels is twice one of them, the difference is silence.
void PitchNamesProcessor::writeMono(Sample32* out, int count) const
{
    if (powerOn && channelMode == 4) {
        std::fill_n(out, count, 0.0f);
        return;
    }
    const double factor = powerOn && channelMode == 0 ? 2.0 : 1.0;
    for (int i = 0; i < count; ++i)
        out[i] = static_cast<Sample32>(workL[i] * factor);
}

}  // namespace Vst
}  // namespace Steinberg
