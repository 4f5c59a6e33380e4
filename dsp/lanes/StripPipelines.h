// The kernels, each a pipeline of stages, for any number of lanes. Local to the file that includes
// it, since every instruction set has its own.
#pragma once

#include "dsp/lanes/StripStages.h"

namespace {

// Calls run(stages...) with the stages of the pre-amplifier's input, and sets up the gains that
// belong to the block.
template <int N, class Run>
ZKR_INLINE void withPreampStages(StripProcessorQB9* const* strips, bool gliding, PreampGains& gains,
                                 Run run)
{
    const auto s = perLane<N>(strips);
    const SecondOrder<N> highPass(s[&StripProcessorQB9::highPass]);
    const Boost<N> boost(s);
    const bool highPassOn = strips[0]->highPass.enabled != 0;
    const bool boostOn = strips[0]->boostOn != 0;
    const auto runBehind = [&](const auto& drive) __attribute__((always_inline))
    {
        if (highPassOn && boostOn)
            run(together(drive, highPass), boost);
        else if (highPassOn)
            run(together(drive, highPass));
        else if (boostOn)
            run(drive, boost);
        else
            run(drive);
    };
    if (gliding) {
        gains.stride = N;
        return runBehind(GlidingDrive<N>(s, &gains));
    }
    gains.stride = 0;
    const auto drive = s.get(&StripProcessorQB9::driveGainCurrent);
    const auto makeup = s.get(&StripProcessorQB9::driveMakeupCurrent);
    Lanes<N>::store(gains.compensation, compensationOf<N>(drive, makeup));
    Lanes<N>::store(gains.output, s.get(&StripProcessorQB9::outputGainCurrent));
    runBehind(ConstantGain<N>(drive));
}

template <int N>
void preampInput(StripProcessorQB9* const* strips, bool gliding, PreampGains& gains, double* rows,
                 int count)
{
    withPreampStages<N>(
        strips, gliding, gains, [&](const auto&... stages) __attribute__((always_inline)) {
            runStages<N>(rows, count, stages..., stored<N>(Unchanged<N>{}, rows));
        });
}

template <int N>
void preampOutput(const PreampGains& gains, double* rows, int count)
{
    runStages<N>(rows, count, Gain<N>({gains.compensation, gains.stride}),
                 stored<N>(Gain<N>({gains.output, gains.stride}), rows));
}

template <int N>
void input(StripProcessorT46* const* strips, double* rows, int count)
{
    using Strip = StripProcessorT46;
    const auto s = perLane<N>(strips);
    const auto damping = s[&Strip::damping];
    const HighPass1<N> dcBlock(s[&Strip::dcBlock]);
    const Wet<N, LowPass1<N>> damping1(
        damping[&DampingFilterPair::first].template as<WetBiquadFilter>());
    const Wet<N, LowPass1<N>> damping2(
        damping[&DampingFilterPair::second].template as<WetBiquadFilter>());
    if (strips[0]->inputTransformerOn)
        runStages<N>(rows, count, together(LowPass1<N>(s[&Strip::inputLowPass]), Transformer<N>{}),
                     together(WithHighPass<N>(s[&Strip::inputHighPass], rows), dcBlock),
                     together(damping1, stored<N>(damping2, rows)));
    else
        runStages<N>(rows, count, dcBlock, together(damping1, stored<N>(damping2, rows)));
}

// The end of the bands: output gain and amplifier, stored.
template <int N>
ZKR_INLINE auto amplified(const PerLane<N, StripProcessorT46>& s, const FactorRows& gain,
                          bool* beyondKnee, double* rows)
{
    return together(Gain<N>(gain), stored<N>(Amplifier<N>(s, beyondKnee), rows));
}

template <int kMode>
using Mode = std::integral_constant<int, kMode>;

// Calls run(stages...) with the bands of a mode, in the order high, mid, low, then the output gain
// and the amplifier. Each call appends one band to the stages `before` and calls itself with the
// mode of the others, `rest`.
template <int N, int kMode, class Run, class... Stages>
ZKR_INLINE void withBands(const PerLane<N, StripProcessorT46>& s, const BandJob& job, Run run,
                          const Stages&... before)
{
    using Strip = StripProcessorT46;
    const auto withShelf = [&](auto filter, const PerLane<N, ShelfSection>& section,
                               const FactorRows& share, auto rest) __attribute__((always_inline))
    {
        using Filter = decltype(filter);
        using ShelfSkirt = Wet<N, Filter>;
        const BandMix<N, ShelfSkirt> mix{ShelfSkirt(section[&ShelfSection::skirt]), share,
                                         job.rows};
        withBands<N, rest.value>(s, job, run, before..., filter, stored<N>(mix, job.rows));
    };
    const auto withBell = [&](const PerLane<N, PeakSection>& section, const FactorRows& share,
                              auto rest) __attribute__((always_inline))
    {
        using LowSkirt = Wet<N, LowPass1<N>>;
        using HighSkirt = Wet<N, HighPass1<N>>;
        const BandMix<N, HighSkirt> mix{HighSkirt(section[&PeakSection::highSkirt]), share,
                                        job.rows};
        withBands<N, rest.value>(
            s, job, run, before..., BandPass<N>(section[&PeakSection::main]),
            together(LowSkirt(section[&PeakSection::lowSkirt]), stored<N>(mix, job.rows)));
    };
    if constexpr ((kMode & kHighShelfBand) != 0)
        withShelf(HighPass1<N>(s[&Strip::highShelf][&ShelfSection::main]), s[&Strip::highShelf],
                  job.gains.high, Mode<kMode - kHighShelfBand>{});
    else if constexpr ((kMode & kHighBellBand) != 0)
        withBell(s[&Strip::highBell], job.gains.high, Mode<kMode - kHighBellBand>{});
    else if constexpr ((kMode & kMidBellBand) != 0)
        withBell(s[&Strip::midBell], job.gains.mid, Mode<kMode - kMidBellBand>{});
    else if constexpr ((kMode & kLowShelfBand) != 0)
        withShelf(LowPass1<N>(s[&Strip::lowShelf][&ShelfSection::main]), s[&Strip::lowShelf],
                  job.gains.low, Mode<kMode - kLowShelfBand>{});
    else if constexpr ((kMode & kLowBellBand) != 0)
        withBell(s[&Strip::lowBell], job.gains.low, Mode<kMode - kLowBellBand>{});
    else
        run(before..., amplified<N>(s, job.gains.output, job.beyondKnee, job.rows));
}

template <int N, int kMode>
void bands(const BandJob& job, int count)
{
    if constexpr (isPossibleBandMode(kMode))
        withBands<N, kMode>(
            perLane<N>(job.strips), job, [&](const auto&... stages) __attribute__((always_inline)) {
                runStages<N>(job.rows, count, stages...);
            });
}

template <int N, int kMode>
void keepBands(const BandJob& job, StripPipeline& pipeline)
{
    if constexpr (isPossibleBandMode(kMode) && N > 1)
        withBands<N, kMode>(
            perLane<N>(job.strips), job, [&](const auto&... stages) __attribute__((always_inline)) {
                keepStages<N>(pipeline, job.rows, stages...);
            });
}

// The output transformer works 26 dB further below its knee.
constexpr double kOutputDown = 0.05, kOutputUp = 20.0;

template <int N>
void output(StripProcessorT46* const* strips, double* rows, int count)
{
    using Strip = StripProcessorT46;
    const auto s = perLane<N>(strips);
    const auto down = stored<N>(ConstantGain<N>(Vec<N>{} + kOutputDown), rows);
    const LowPass1<N> low(s[&Strip::outputLowPass]);
    const Transformer<N> curve;
    const WithHighPass<N> high(s[&Strip::outputHighPass], rows);
    const auto up = stored<N>(ConstantGain<N>(Vec<N>{} + kOutputUp), rows);
    runStages<N>(rows, count, together(down, low), together(curve, high, up));
}

template <int kStrips, class... Stages>
ZKR_INLINE void keepInputOfAll(const InputOfAll& job, StripPipeline& pipeline,
                               const Stages&... before)
{
    using Strip = StripProcessorT46;
    constexpr int kLanes = 2 * kStrips;
    StripProcessorT46* const* const first = job.strips;
    StripProcessorT46* const* const last = job.strips + kLanes - 2;
    const Filters<4> lowPasses{{&first[0]->inputLowPass, &first[1]->inputLowPass,
                                &last[0]->outputLowPass, &last[1]->outputLowPass}};
    const Filters<4> highPasses{{&first[0]->inputHighPass, &first[1]->inputHighPass,
                                 &last[0]->outputHighPass, &last[1]->outputHighPass}};
    const auto s = perLane<kLanes>(job.strips);
    const auto damping = s[&Strip::damping];
    using Damping = Wet<kLanes, LowPass1<kLanes>>;
    const HighPass1<kLanes> dcBlock(s[&Strip::dcBlock]);
    const Damping damping1(damping[&DampingFilterPair::first].template as<WetBiquadFilter>());
    const Damping damping2(damping[&DampingFilterPair::second].template as<WetBiquadFilter>());
    const ConstantGain<4> down(Vec<4>{1.0, 1.0, kOutputDown, kOutputDown});
    const ConstantGain<4> up(Vec<4>{1.0, 1.0, kOutputUp, kOutputUp});
    const auto keep = [&](const auto&... behind) __attribute__((always_inline))
    {
        keepStages<2>(pipeline, job.next, before...,
                      together(BesideLast<kLanes>(job.body), stored<4>(down, job.scratch),
                               LowPass1<4>(lowPasses)),
                      together(Transformer<4>{}, WithHighPass<4>(highPasses, job.scratch), up,
                               WithoutLast<kLanes>(job.body, job.out)),
                      together(dcBlock, damping1), behind...);
    };
    if (job.amplifierGain)
        keep(
            together(damping2, amplified<kLanes>(s, *job.amplifierGain, job.beyondKnee, job.body)));
    else
        keep(stored<kLanes>(damping2, job.body));
}

template <int kStrips>
void inputOfAll(const InputOfAll& job, StripPipeline& pipeline)
{
    if (!job.preamps)
        return keepInputOfAll<kStrips>(job, pipeline);
    withPreampStages<2>(
        job.preamps, job.preampGliding,
        *job.preampGains, [&](const auto&... stages) __attribute__((always_inline)) {
            keepInputOfAll<kStrips>(job, pipeline, stages...);
        });
}

template <int N>
void glideGains(GainGlides& glides, BandGainRows& rows, int count)
{
    using Row = Lanes<N>;
    Vec<N> low = Row::load(glides.low.gain), mid = Row::load(glides.mid.gain),
           high = Row::load(glides.high.gain), output = Row::load(glides.output.gain);
    const Vec<N> lowStep = Row::load(glides.low.step), midStep = Row::load(glides.mid.step),
                 highStep = Row::load(glides.high.step), outputStep = Row::load(glides.output.step);
    for (int i = 0; i < count; ++i) {
        low += lowStep;
        mid += midStep;
        high += highStep;
        output += outputStep;
        Lanes<N>::store(rows.low + i * N, 1.0 - low);
        Lanes<N>::store(rows.mid + i * N, 1.0 - mid);
        Lanes<N>::store(rows.high + i * N, 1.0 - high);
        Lanes<N>::store(rows.output + i * N, output);
    }
    Lanes<N>::store(glides.low.gain, low);
    Lanes<N>::store(glides.mid.gain, mid);
    Lanes<N>::store(glides.high.gain, high);
    Lanes<N>::store(glides.output.gain, output);
}

using BandModes = std::make_integer_sequence<int, kBandsOff>;

template <int N, int... kModes>
constexpr LaneKernels laneKernels(std::integer_sequence<int, kModes...>)
{
    return {preampInput<N>, preampOutput<N>,        input<N>, output<N>, {bands<N, kModes>...},
            glideGains<N>,  bendBeyondKnee<kWidest>};
}

template <int kStrips, int... kModes>
constexpr ParallelKernels parallelKernels(std::integer_sequence<int, kModes...>)
{
    return {inputOfAll<kStrips>,
            {keepBands<2 * kStrips, kModes>...},
            glideGains<2 * kStrips>,
            bendBeyondKnee<kWidest>};
}

}  // namespace
