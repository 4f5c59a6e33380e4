// One block of audio, from the host's input buffers to its output buffers, in sub-blocks of 16
// samples.
#include "PitchNamesProcessor.h"

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

}  // namespace

void PitchNamesProcessor::processStereo(Sample32** inputs, Sample32** outputs, int32 n)
{
    const Sample32* inL = inputs[0];
    const Sample32* inR = stereoIn ? inputs[1] : inputs[0];
    Sample32* outL = outputs[0];
    Sample32* outR = outputs[1];
    const SubBlock work{workL, workR};
    const SubBlock temp{tempL, tempR};

    startBlockPolarity(inputs, n);
    for (int done = 0; done < n;) {
        const int sub = std::min(kSubBlock, n - done);
        widen(inL + done, workL, sub);
        widen(inR + done, workR, sub);
        const int count = raiseRate(work, temp, sub);
        if (midSideOn)
            encodeMidSide(workL, workR, count);
        runStripsStereo(workL, workR, count);
        if (midSideOn)
            decodeMidSide(workL, workR, count);
        lowerRate(work, temp, count);
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
    const SubBlock temp{tempL, nullptr};

    startBlockPolarity(inputs, n);
    for (int done = 0; done < n;) {
        const int sub = std::min(kSubBlock, n - done);
        widen(in + done, workL, sub);
        const int count = raiseRate(work, temp, sub);
        if (midSideOn)
            scale(workL, 2.0, count);
        runStripsMono(workL, count);
        if (midSideOn)
            scale(workL, 0.5, count);
        lowerRate(work, temp, count);
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
    if (!powerOn || !preampOn)
        return;

    StripProcessorQB9* const l = channel1Active ? preampStripL.get() : nullptr;
    // Without a channel of its own the right strip has nothing to flip, and waits.
    StripProcessorQB9* const r = channel2Active && stereoIn ? preampStripR.get() : nullptr;
    if (l && r && l->phaseChangePending && r->phaseChangePending) {
        l->applyPhaseLinkedFloat(inputs[0], inputs[1], &l->inverted, &r->inverted, n);
        l->phaseChangePending = 0;
        r->phaseChangePending = 0;
        return;
    }
    if (l)
        l->applyPhaseFloat(inputs[0], n);
    if (r)
        r->applyPhaseFloat(inputs[1], n);
}

// Takes `count` samples of `work` to the strips' rate and returns how many they are there.
int PitchNamesProcessor::raiseRate(const SubBlock& work, const SubBlock& temp, int count)
{
    const auto copyBack = [&](int length) {
        std::copy_n(temp.left, length, work.left);
        if (temp.right)
            std::copy_n(temp.right, length, work.right);
    };
    if (oversampleMode >= 1) {
        oversampling.firstDoubling(work, temp, count);
        count *= 2;
        copyBack(count);
    }
    if (oversampleMode == 2) {
        oversampling.secondDoubling(work, temp, count);
        count *= 2;
        copyBack(count);
    }
    return count;
}

// Brings `count` samples of `work` back to the host's rate and returns how many are left.
int PitchNamesProcessor::lowerRate(const SubBlock& work, const SubBlock& temp, int count)
{
    if (oversampleMode == 0)
        return count;
    oversampling.decimationFilter(oversampleMode == 1 ? down2xCoeffs : down4xCoeffs, work, temp,
                                  count);
    const auto keepOdd = [](const SubBlock& in, const SubBlock& out, int kept) {
        keepOddSamples(in.left, out.left, kept);
        if (in.right)
            keepOddSamples(in.right, out.right, kept);
    };
    count /= 2;
    keepOdd(temp, work, count);
    if (oversampleMode == 2) {
        count /= 2;
        keepOdd(work, work, count);
    }
    return count;
}

void PitchNamesProcessor::runStripsStereo(double* l, double* r, int count)
{
    if (!powerOn)
        return;
    StripProcessorQB9* const preampL = preampOn && channel1Active ? preampStripL.get() : nullptr;
    StripProcessorQB9* const preampR = preampOn && channel2Active ? preampStripR.get() : nullptr;

    if (!phaseDoneForBlock) {
        if (preampL && preampR && preampL->phaseChangePending && preampR->phaseChangePending) {
            preampL->applyPhaseLinked(l, r, &preampL->inverted, &preampR->inverted, count);
            preampL->phaseChangePending = 0;
            preampR->phaseChangePending = 0;
        } else {
            if (preampL)
                preampL->applyPhase(l, count);
            if (preampR)
                preampR->applyPhase(r, count);
        }
    }
    if (preampL)
        preampL->processInputStage(l, count);
    if (preampR)
        preampR->processInputStage(r, count);

    if (eqStripL && channel1Active)
        eqStripL->process(l, count);
    if (eqStripR && channel2Active)
        eqStripR->process(r, count);
    if (secondaryOn) {
        if (eqStripL2 && channel1Active)
            eqStripL2->process(l, count);
        if (eqStripR2 && channel2Active)
            eqStripR2->process(r, count);
    }

    if (preampL)
        preampL->processOutputStage(l, count);
    if (preampR)
        preampR->processOutputStage(r, count);
}

void PitchNamesProcessor::runStripsMono(double* x, int count)
{
    if (!powerOn || !channel1Active)
        return;
    StripProcessorQB9* const preamp = preampOn ? preampStripL.get() : nullptr;
    if (preamp && !phaseDoneForBlock)
        preamp->applyPhase(x, count);
    if (preamp)
        preamp->processInputStage(x, count);
    if (eqStripL)
        eqStripL->process(x, count);
    if (secondaryOn && eqStripL2)
        eqStripL2->process(x, count);
    if (preamp)
        preamp->processOutputStage(x, count);
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
