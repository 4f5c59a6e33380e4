// PitchNamesProcessor: a block of audio, from the host's input buffers to its output buffers, in
// sub-blocks of 16 samples.
#include "shell/PitchNamesProcessor.h"

#include <algorithm>
#include <cmath>

namespace Steinberg {
namespace Vst {

namespace {

constexpr int kSubBlock = 16;

// Values of channelMode.
constexpr int32 kMiddle = 0, kLeft = 1, kStereo = 2, kRight = 3, kSide = 4;

// The host's samples as doubles. One that is not finite becomes 0, since it would never leave the
// filters' histories.
void widen(const Sample32* in, double* out, int count)
{
    for (int i = 0; i < count; ++i)
        out[i] = std::isfinite(in[i]) ? static_cast<double>(in[i]) : 0.0;
}

// Encoding does not scale, decoding halves.
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

// The polarity stage of two channels, through the strips' functions for the sample type. If both
// channels have a pending change, both change at the same sample. A strip not in use is null.
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
    const StripChain left = leftChain();
    const StripChain right = rightChain();
    StripRun strips(processingForm, left, &right);
    int written = 0;
    const auto finish = [&](int count) {
        if (midSideOn)
            decodeMidSide(workL, workR, count);
        const int sub = oversampling.lowerRate(oversampleMode, work, count);
        writeStereo(outL + written, outR + written, sub);
        written += sub;
    };
    for (int done = 0; done < n;) {
        const int sub = std::min(kSubBlock, n - done);
        widen(inL + done, workL, sub);
        widen(inR + done, workR, sub);
        done += sub;
        const int count = oversampling.raiseRate(oversampleMode, work, sub);
        if (midSideOn)
            encodeMidSide(workL, workR, count);
        if (!phaseDoneForBlock)
            applyPolarity(left.preamp, right.preamp, workL, workR, count,
                          &StripProcessorQB9::applyPhase, &StripProcessorQB9::applyPhaseLinked);
        // The strips give back an earlier sub-block, or none yet.
        if (const int finished = strips.push(workL, workR, count))
            finish(finished);
    }
    while (const int finished = strips.flush(workL, workR))
        finish(finished);
}

// A mono signal is its own mid channel: in Mid/Side operation the strips see it doubled.
void PitchNamesProcessor::processMono(Sample32** inputs, Sample32** outputs, int32 n)
{
    const Sample32* in = inputs[0];
    Sample32* out = outputs[0];
    const SubBlock work{workL, nullptr};

    startBlockPolarity(inputs, n);
    const StripChain chain = leftChain();
    StripRun strips(processingForm, chain, nullptr);
    for (int done = 0; done < n;) {
        const int sub = std::min(kSubBlock, n - done);
        widen(in + done, workL, sub);
        const int count = oversampling.raiseRate(oversampleMode, work, sub);
        if (midSideOn)
            scale(workL, 2.0, count);
        if (!phaseDoneForBlock && chain.preamp)
            chain.preamp->applyPhase(workL, count);
        strips.push(workL, nullptr, count);  // one channel comes back at once
        if (midSideOn)
            scale(workL, 0.5, count);
        oversampling.lowerRate(oversampleMode, work, count);
        writeMono(out + done, sub);
        done += sub;
    }
}

// Copies the input to the output, without delay.
void PitchNamesProcessor::passStereo(Sample32** inputs, Sample32** outputs, int32 n)
{
    // Both are read before either is written: the output buffers may be the input buffers, also
    // with the channels swapped.
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

// The polarity changes at the quietest sample. Without Mid/Side operation, and in a block longer
// than a sub-block, that is the quietest of the whole block: the stage runs here, in place in the
// host's input buffers. Otherwise it runs in each sub-block.
void PitchNamesProcessor::startBlockPolarity(Sample32** inputs, int32 n)
{
    phaseDoneForBlock = 0;
    if (midSideOn || n <= kSubBlock)
        return;
    phaseDoneForBlock = 1;
    // Without a right input, a change of the right strip stays pending.
    applyPolarity(leftChain().preamp, stereoIn ? rightChain().preamp : nullptr, inputs[0],
                  stereoIn ? inputs[1] : nullptr, n, &StripProcessorQB9::applyPhaseFloat,
                  &StripProcessorQB9::applyPhaseLinkedFloat);
}

// The strips of a channel; none if it is bypassed or the power is off.
StripChain PitchNamesProcessor::leftChain() const
{
    if (!powerOn || !channel1Active)
        return {};
    return {preampOn ? preampStripL.get() : nullptr, eqStripL.get(),
            secondaryOn ? eqStripL2.get() : nullptr};
}

StripChain PitchNamesProcessor::rightChain() const
{
    if (!powerOn || !channel2Active)
        return {};
    return {preampOn ? preampStripR.get() : nullptr, eqStripR.get(),
            secondaryOn ? eqStripR2.get() : nullptr};
}

// Selects the output by the channel mode; sums and differences are not scaled.
void PitchNamesProcessor::writeStereo(Sample32* outL, Sample32* outR, int count) const
{
    const int mode = powerOn ? channelMode : kStereo;
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

// As writeStereo with two equal channels: their sum is twice the signal, their difference silence.
void PitchNamesProcessor::writeMono(Sample32* out, int count) const
{
    if (powerOn && channelMode == kSide) {
        std::fill_n(out, count, 0.0f);
        return;
    }
    const double factor = powerOn && channelMode == kMiddle ? 2.0 : 1.0;
    for (int i = 0; i < count; ++i)
        out[i] = static_cast<Sample32>(workL[i] * factor);
}

}  // namespace Vst
}  // namespace Steinberg
