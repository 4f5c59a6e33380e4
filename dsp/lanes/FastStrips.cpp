#include "dsp/lanes/FastStrips.h"

#include <algorithm>

namespace {

bool isSteady(const BiquadFilter& filter)
{
    return filter.enabled && filter.rampCount == 0 && !filter.limitEnabled;
}

bool isSteady(const ShelfSection& section)
{
    return isSteady(section.main) && isSteady(section.skirt);
}

bool isSteady(const PeakSection& section)
{
    return isSteady(section.main) && isSteady(section.lowSkirt) && isSteady(section.highSkirt);
}

int bandsOf(const StripProcessorT46& strip)
{
    return strip.processOn ? strip.bandMode : kNoBands;
}

// A smoother is at rest when a step no longer changes its value.
bool isAtRest(double current, double target, double coeff)
{
    return StripProcessorQB9::smoothed(current, target, coeff) == current;
}

bool isAtRest(const StripProcessorQB9& s)
{
    return isAtRest(s.driveGainCurrent, s.driveGainTarget, s.smoothingCoeff)
        && isAtRest(s.driveMakeupCurrent, s.driveMakeupTarget, s.smoothingCoeff)
        && isAtRest(s.outputGainCurrent, s.outputGainTarget, s.smoothingCoeff);
}

// A gain of a strip, and where its lanes are in GainGlides.
struct StripGain {
    double StripProcessorT46::*gain;
    double StripProcessorT46::*step;
    GainGlides::Glide GainGlides::*glide;
};
constexpr StripGain kStripGains[] = {
    {&StripProcessorT46::lowGain, &StripProcessorT46::lowGainStep, &GainGlides::low},
    {&StripProcessorT46::midGain, &StripProcessorT46::midGainStep, &GainGlides::mid},
    {&StripProcessorT46::highGain, &StripProcessorT46::highGainStep, &GainGlides::high},
    {&StripProcessorT46::outputGain, &StripProcessorT46::outputGainStep, &GainGlides::output},
};

bool isGliding(const StripProcessorT46& strip)
{
    return strip.processOn && strip.gainRampCount > 0;
}

void writeRow(const StripProcessorT46& strip, BandGainRows& rows, int at)
{
    rows.low[at] = 1.0 - strip.lowGain;
    rows.mid[at] = 1.0 - strip.midGain;
    rows.high[at] = 1.0 - strip.highGain;
    rows.output[at] = strip.outputGain;
}

void stepOneByOne(StripProcessorT46* const* strips, int lanes, BandGainRows& rows, int count)
{
    for (int k = 0; k < lanes; ++k)
        for (int i = 0; i < count; ++i) {
            if (strips[k]->processOn)
                strips[k]->stepGains();
            writeRow(*strips[k], rows, i * lanes + k);
        }
}

// For strips whose glides last at least `count` samples, or have ended.
template <class Kernels>
void stepInLanes(const Kernels& kernels, StripProcessorT46* const* strips, int lanes,
                 BandGainRows& rows, int count)
{
    GainGlides glides;
    for (int k = 0; k < lanes; ++k) {
        StripProcessorT46& strip = *strips[k];
        if (strip.processOn && strip.gainRampCount == 0)
            strip.stepGains();  // all gains take their targets and stay there
        for (const StripGain& one : kStripGains) {
            (glides.*one.glide).gain[k] = strip.*one.gain;
            (glides.*one.glide).step[k] = isGliding(strip) ? strip.*one.step : 0.0;
        }
    }
    kernels.glideGains(glides, rows, count);
    for (int k = 0; k < lanes; ++k) {
        StripProcessorT46& strip = *strips[k];
        if (!isGliding(strip))
            continue;
        strip.gainRampCount -= count;
        for (const StripGain& one : kStripGains)
            strip.*one.gain = (glides.*one.glide).gain[k];
    }
}

bool anyGlides(StripProcessorT46* const* strips, int lanes)
{
    for (int k = 0; k < lanes; ++k)
        if (isGliding(*strips[k]))
            return true;
    return false;
}

// Advances the gains of strips in lanes by `count` samples and writes their rows.
template <class Kernels>
void stepGains(const Kernels& kernels, StripProcessorT46* const* strips, int lanes,
               BandGainRows& rows, int count)
{
    bool anyEnds = false;
    for (int k = 0; k < lanes; ++k)
        anyEnds |= isGliding(*strips[k]) && strips[k]->gainRampCount < count;
    if (anyEnds || count == 1)
        stepOneByOne(strips, lanes, rows, count);
    else
        stepInLanes(kernels, strips, lanes, rows, count);
    for (int k = 0; k < lanes; ++k)
        if (bandsOf(*strips[k]) == kNoBands)  // no band: no output gain
            for (int i = 0; i < count; ++i)
                rows.output[i * lanes + k] = 1.0;
}

BandGains gainsOf(const BandGainRows& rows, int stride)
{
    return {{rows.low, stride}, {rows.mid, stride}, {rows.high, stride}, {rows.output, stride}};
}

// What precedes an input stage: a high-pass that is off has no history. Returns whether drive or
// output gain glide.
bool prepare(StripProcessorQB9* const* preamps, int channels)
{
    bool gliding = false;
    for (int k = 0; k < channels; ++k) {
        gliding |= !isAtRest(*preamps[k]);
        if (!preamps[k]->highPass.enabled)
            preamps[k]->highPass.process(nullptr, 0);  // clears its history
    }
    return gliding;
}

void storeCompensation(StripProcessorQB9* const* preamps, int lanes, const PreampGains& gains,
                       int count)
{
    for (int k = 0; k < lanes; ++k)
        for (int i = 0; i < count; ++i)
            preamps[k]->compensation[static_cast<std::size_t>(i)] =
                gains.compensation[i * gains.stride + k];
}

}  // namespace

bool canRunFast(const StripProcessorT46& s)
{
    const int bands = bandsOf(s);
    return bands != kBandsOff && isPossibleBandMode(bands) && isSteady(s.dcBlock)
        && isSteady(s.damping.first) && isSteady(s.damping.second)
        && (!s.inputTransformerOn || (isSteady(s.inputLowPass) && isSteady(s.inputHighPass)))
        && (!s.outputTransformerOn || (isSteady(s.outputLowPass) && isSteady(s.outputHighPass)))
        && (!(bands & kHighShelfBand) || isSteady(s.highShelf))
        && (!(bands & kHighBellBand) || isSteady(s.highBell))
        && (!(bands & kMidBellBand) || isSteady(s.midBell))
        && (!(bands & kLowShelfBand) || isSteady(s.lowShelf))
        && (!(bands & kLowBellBand) || isSteady(s.lowBell));
}

bool canRunFast(const StripProcessorQB9& s)
{
    const bool highPassOff = !s.highPass.enabled && s.highPass.rampCount == 0;
    return (highPassOff || isSteady(s.highPass)) && (!s.boostOn || isSteady(s.boostBand));
}

bool haveSameStages(const StripProcessorQB9& a, const StripProcessorQB9& b)
{
    return a.highPass.enabled == b.highPass.enabled && a.boostOn == b.boostOn;
}

bool haveSameBands(const StripProcessorT46& a, const StripProcessorT46& b)
{
    return bandsOf(a) == bandsOf(b) && a.ampOn == b.ampOn;
}

// Calls run(kernels, first lane, rows): once if all channels have the same switches, else for each
// lane alone, on a copy of its samples.
template <class Strip, class Same, class Run>
void FastStrips::runLanes(Strip* const* strips, Same same, double* rows, int count, Run run) const
{
    if (channels == 1 || same(*strips[0], *strips[1]))
        return run(channels == 1 ? kOneLane : kTwoLanes, 0, rows);
    for (int k = 0; k < channels; ++k) {
        double lane[kMaxRows];
        for (int i = 0; i < count; ++i)
            lane[i] = rows[i * channels + k];
        run(kOneLane, k, lane);
        for (int i = 0; i < count; ++i)
            rows[i * channels + k] = lane[i];
    }
}

void FastStrips::runPreampInput(StripProcessorQB9* const* strips, PreampGains* gains, double* rows,
                                int count) const
{
    const bool gliding = prepare(strips, channels);
    runLanes(strips, haveSameStages, rows, count, [&](const LaneKernels& lanes, int k, double* x) {
        lanes.preampInput(strips + k, gliding, gains[k], x, count);
        storeCompensation(strips + k, &lanes == &kOneLane ? 1 : channels, gains[k], count);
    });
}

void FastStrips::runPreampOutput(StripProcessorQB9* const* strips, const PreampGains* gains,
                                 double* rows, int count) const
{
    runLanes(strips, haveSameStages, rows, count, [&](const LaneKernels& lanes, int k, double* x) {
        lanes.preampOutput(gains[k], x, count);
    });
}

void FastStrips::runInput(StripProcessorT46* const* strips, double* rows, int count) const
{
    const auto same = [](const StripProcessorT46& a, const StripProcessorT46& b) {
        return a.inputTransformerOn == b.inputTransformerOn;
    };
    runLanes(strips, same, rows, count, [&](const LaneKernels& lanes, int k, double* x) {
        lanes.input(strips + k, x, count);
    });
}

// Without a glide, one row of factors serves for all rows.
void FastStrips::runBands(StripProcessorT46* const* strips, double* rows, int count) const
{
    const bool gliding = anyGlides(strips, channels);
    BandGainRows gainRows;
    stepGains(channels == 1 ? kOneLane : kTwoLanes, strips, channels, gainRows,
              gliding ? count : 1);
    const BandGains gains = gainsOf(gainRows, gliding ? channels : 0);
    runLanes(strips, haveSameBands, rows, count, [&](const LaneKernels& lanes, int k, double* x) {
        bool beyondKnee = false;
        lanes.bands[bandsOf(*strips[k])]({strips + k, gains.lane(k), &beyondKnee, x}, count);
        if (beyondKnee && strips[k]->ampOn)
            lanes.bendBeyondKnee(x, count * (&lanes == &kOneLane ? 1 : channels));
    });
}

void FastStrips::runOutputTransformer(StripProcessorT46* const* strips, double* rows,
                                      int count) const
{
    const auto same = [](const StripProcessorT46& a, const StripProcessorT46& b) {
        return a.outputTransformerOn == b.outputTransformerOn;
    };
    runLanes(strips, same, rows, count, [&](const LaneKernels& lanes, int k, double* x) {
        if (strips[k]->outputTransformerOn)
            lanes.output(strips + k, x, count);
    });
}

void ParallelStrips::setUp(const ParallelKernels& theKernels, StripProcessorQB9* const* thePreamps,
                           StripProcessorT46* const* theStrips, int stripCount, const double* next,
                           double* theBody, double* out, double* scratch)
{
    kernels = &theKernels;
    preamps = thePreamps;
    strips = theStrips;
    body = theBody;
    lanes = 2 * stripCount;
    gainsGlide = anyGlides(strips, lanes);
    if (!gainsGlide)
        stepGains(*kernels, strips, lanes, gainRows, 1);
    const BandGains bandGains = gainsOf(gainRows, gainsGlide ? lanes : 0);
    const int mode = bandsOf(*strips[0]);
    hasBands = mode != kNoBands;
    beyondKnee = false;
    kernels->inputOfAll({preamps, preamps && prepare(preamps, 2), &gains, strips,
                         hasBands ? nullptr : &bandGains.output, &beyondKnee, next, body, out,
                         scratch},
                        input);
    if (hasBands)
        kernels->bands[mode]({strips, bandGains, &beyondKnee, body}, bands);
}

void ParallelStrips::run(PreampGains& preampGains, int count)
{
    if (gainsGlide)
        stepGains(*kernels, strips, lanes, gainRows, count);
    input.run(input.memory, count);
    if (preamps) {
        const int rows = gains.stride == 0 ? 1 : count;
        preampGains.stride = gains.stride;
        std::copy_n(gains.compensation, 2 * rows, preampGains.compensation);
        std::copy_n(gains.output, 2 * rows, preampGains.output);
    }
    lastCount = count;
    if (hasBands)
        bands.run(bands.memory, count);
    if (beyondKnee && strips[0]->ampOn)
        kernels->bendBeyondKnee(body, count * lanes);
}

void ParallelStrips::writeBack()
{
    if (preamps)
        storeCompensation(preamps, 2, gains, lastCount);
    input.writeBack(input.memory);
    if (hasBands)
        bands.writeBack(bands.memory);
}
