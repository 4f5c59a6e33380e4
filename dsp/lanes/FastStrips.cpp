#include "dsp/lanes/FastStrips.h"

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

bool isSteady(const StripProcessorT46& s)
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

bool isSteady(const StripProcessorQB9& s)
{
    const bool highPassOff = !s.highPass.enabled && s.highPass.rampCount == 0;
    return (highPassOff || isSteady(s.highPass)) && (!s.boostOn || isSteady(s.boostBand));
}

// A smoother is at rest when a step no longer changes its value.
bool isAtRest(double current, double target, double coeff)
{
    return StripProcessorQB9::smoothed(current, target, coeff) == current;
}

bool isDriveAtRest(const StripProcessorQB9& s)
{
    return isAtRest(s.driveGainCurrent, s.driveGainTarget, s.smoothingCoeff)
        && isAtRest(s.driveMakeupCurrent, s.driveMakeupTarget, s.smoothingCoeff);
}

bool isOutputGainAtRest(const StripProcessorQB9& s)
{
    return isAtRest(s.outputGainCurrent, s.outputGainTarget, s.smoothingCoeff);
}

// With no glide running, the gains take their targets with the next sample and stay there.
bool areGainsAtRest(const StripProcessorT46& s)
{
    return !s.processOn || s.gainRampCount == 0;
}

template <class Strip>
bool forAll(Strip* const* strips, int lanes, bool (*holds)(const Strip&))
{
    for (int k = 0; k < lanes; ++k)
        if (!holds(*strips[k]))
            return false;
    return true;
}

}  // namespace

bool canRunFast(const StripChain& chain)
{
    return (!chain.preamp || isSteady(*chain.preamp)) && (!chain.first || isSteady(*chain.first))
        && (!chain.second || isSteady(*chain.second));
}

// Calls run(kernels, first lane, rows): once if all lanes have the same setting, else for each lane
// alone, on a copy of its samples.
template <class Strip, class Setting, class Run>
void FastStrips::runLanes(Strip* const* strips, Setting setting, Run run)
{
    if (lanes == 1)
        return run(kOneLane, 0, rows);
    if (setting(*strips[0]) == setting(*strips[1]))
        return run(kTwoLanes, 0, rows);
    for (int k = 0; k < lanes; ++k) {
        double lane[StripProcessorQB9::kMaxCount];
        for (int i = 0; i < count; ++i)
            lane[i] = rows[i * lanes + k];
        run(kOneLane, k, lane);
        for (int i = 0; i < count; ++i)
            rows[i * lanes + k] = lane[i];
    }
}

void FastStrips::runPreampInput(StripProcessorQB9* const* strips)
{
    const bool atRest = forAll(strips, lanes, isDriveAtRest);
    const int steps = atRest ? 1 : count;
    const int stride = atRest ? 0 : lanes;
    double* const drive = factors[0];
    for (int i = 0; i < steps; ++i)
        for (int k = 0; k < lanes; ++k) {
            compensations[i * lanes + k] = strips[k]->stepDrive();
            drive[i * lanes + k] = strips[k]->driveGainCurrent;
        }
    compensation = {compensations, stride};
    for (int k = 0; k < lanes; ++k) {
        double* const stored = strips[k]->compensation.data();
        for (int i = 0; i < count; ++i)
            stored[i] = compensations[i * stride + k];
        if (!strips[k]->highPass.enabled)
            strips[k]->highPass.process(nullptr, 0);  // clears its history
    }

    runLanes(
        strips, [](const StripProcessorQB9& s) { return 2 * s.highPass.enabled + s.boostOn; },
        [&](const LaneKernels& kernels, int k, double* x) {
            kernels.preampInput(strips + k, {drive + k, stride}, x, count);
        });
}

void FastStrips::runPreampOutput(StripProcessorQB9* const* strips)
{
    const bool atRest = forAll(strips, lanes, isOutputGainAtRest);
    const int steps = atRest ? 1 : count;
    double* const gain = factors[0];
    for (int i = 0; i < steps; ++i)
        for (int k = 0; k < lanes; ++k) {
            strips[k]->stepOutputGain();
            gain[i * lanes + k] = strips[k]->outputGainCurrent;
        }
    const LaneKernels& kernels = lanes == 1 ? kOneLane : kTwoLanes;
    kernels.preampOutput(compensation, {gain, atRest ? 0 : lanes}, rows, count);
}

void FastStrips::runStrip(StripProcessorT46* const* strips)
{
    using Strip = StripProcessorT46;
    runLanes(
        strips, [](const Strip& s) { return s.inputTransformerOn; },
        [&](const LaneKernels& kernels, int k, double* x) { kernels.input(strips + k, x, count); });
    const StripFactors gains = stepGains(strips);
    runLanes(strips, bandsOf, [&](const LaneKernels& kernels, int k, double* x) {
        if (const int bands = bandsOf(*strips[k]))
            kernels.bands[bands](strips + k, gains.shares.lane(k), x, count);
    });
    runLanes(
        strips, [](const Strip& s) { return 2 * s.ampOn + s.outputTransformerOn; },
        [&](const LaneKernels& kernels, int k, double* x) {
            kernels.output(strips + k, gains.output.lane(k), x, count);
        });
}

// Without a glide, one row of factors serves for all rows.
FastStrips::StripFactors FastStrips::stepGains(StripProcessorT46* const* strips)
{
    const bool atRest = forAll(strips, lanes, areGainsAtRest);
    const int steps = atRest ? 1 : count;
    auto& [low, mid, high, output] = factors;
    for (int k = 0; k < lanes; ++k) {
        StripProcessorT46& strip = *strips[k];
        const bool noBands = bandsOf(strip) == kNoBands;
        for (int i = 0; i < steps; ++i) {
            if (strip.processOn)
                strip.stepGains();
            const int at = i * lanes + k;
            low[at] = 1.0 - strip.lowGain;
            mid[at] = 1.0 - strip.midGain;
            high[at] = 1.0 - strip.highGain;
            output[at] = noBands ? 1.0 : strip.outputGain;  // no band: no output gain
        }
    }
    const int stride = atRest ? 0 : lanes;
    return {{{low, stride}, {mid, stride}, {high, stride}}, {output, stride}};
}
