// The kernels, each a pipeline of stages.
#include "dsp/lanes/StripStages.h"

#include <utility>

namespace {

template <int N>
void preampInput(StripProcessorQB9* const* strips, FactorRows drive, double* rows, int count)
{
    const auto s = perLane<N>(strips);
    const Gain<N> gain{drive};
    const SecondOrder<N> highPass(s[&StripProcessorQB9::highPass]);
    const Boost<N> boost(s);
    const bool highPassOn = strips[0]->highPass.enabled != 0;
    const bool boostOn = strips[0]->boostOn != 0;
    if (highPassOn && boostOn)
        runStages<N>(rows, count, gain, highPass, stored<N>(boost, rows));
    else if (highPassOn)
        runStages<N>(rows, count, gain, stored<N>(highPass, rows));
    else if (boostOn)
        runStages<N>(rows, count, gain, stored<N>(boost, rows));
    else
        runStages<N>(rows, count, stored<N>(gain, rows));
}

template <int N>
void preampOutput(FactorRows compensation, FactorRows outputGain, double* rows, int count)
{
    runStages<N>(rows, count, Gain<N>{compensation}, stored<N>(Gain<N>{outputGain}, rows));
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
        runStages<N>(rows, count, LowPass1<N>(s[&Strip::inputLowPass]), Transformer<N>{},
                     WithHighPass<N>(s[&Strip::inputHighPass], rows), dcBlock, damping1,
                     stored<N>(damping2, rows));
    else
        runStages<N>(rows, count, dcBlock, damping1, stored<N>(damping2, rows));
}

template <int kMode>
using Mode = std::integral_constant<int, kMode>;

// Appends the bands of a mode to the stages `before`, in the order high, mid, low, and runs them
// all. Each call appends one band and calls itself with the mode of the others, `rest`.
template <int N, int kMode, class... Stages>
ZKR_INLINE void runBands(const PerLane<N, StripProcessorT46>& s, const BandShares& shares,
                         double* rows, int count, const Stages&... before)
{
    using Strip = StripProcessorT46;
    const auto withShelf = [&](auto filter, const PerLane<N, ShelfSection>& section,
                               const FactorRows& share, auto rest) __attribute__((always_inline))
    {
        using Filter = decltype(filter);
        using ShelfSkirt = Wet<N, Filter>;
        const BandMix<N, ShelfSkirt> mix{ShelfSkirt(section[&ShelfSection::skirt]), share, rows};
        runBands<N, rest.value>(s, shares, rows, count, before..., filter, stored<N>(mix, rows));
    };
    const auto withBell = [&](const PerLane<N, PeakSection>& section, const FactorRows& share,
                              auto rest) __attribute__((always_inline))
    {
        using LowSkirt = Wet<N, LowPass1<N>>;
        using HighSkirt = Wet<N, HighPass1<N>>;
        const BandMix<N, HighSkirt> mix{HighSkirt(section[&PeakSection::highSkirt]), share, rows};
        runBands<N, rest.value>(s, shares, rows, count, before...,
                                BandPass<N>(section[&PeakSection::main]),
                                LowSkirt(section[&PeakSection::lowSkirt]), stored<N>(mix, rows));
    };
    if constexpr ((kMode & kHighShelfBand) != 0)
        withShelf(HighPass1<N>(s[&Strip::highShelf][&ShelfSection::main]), s[&Strip::highShelf],
                  shares.high, Mode<kMode - kHighShelfBand>{});
    else if constexpr ((kMode & kHighBellBand) != 0)
        withBell(s[&Strip::highBell], shares.high, Mode<kMode - kHighBellBand>{});
    else if constexpr ((kMode & kMidBellBand) != 0)
        withBell(s[&Strip::midBell], shares.mid, Mode<kMode - kMidBellBand>{});
    else if constexpr ((kMode & kLowShelfBand) != 0)
        withShelf(LowPass1<N>(s[&Strip::lowShelf][&ShelfSection::main]), s[&Strip::lowShelf],
                  shares.low, Mode<kMode - kLowShelfBand>{});
    else if constexpr ((kMode & kLowBellBand) != 0)
        withBell(s[&Strip::lowBell], shares.low, Mode<kMode - kLowBellBand>{});
    else
        runStages<N>(rows, count, before...);
}

template <int N, int kMode>
void bands(StripProcessorT46* const* strips, BandShares shares, double* rows, int count)
{
    if constexpr (isPossibleBandMode(kMode) && kMode != kNoBands)
        runBands<N, kMode>(perLane<N>(strips), shares, rows, count);
}

template <int N>
void output(StripProcessorT46* const* strips, FactorRows outputGain, double* rows, int count)
{
    // The output transformer works 26 dB further below its knee.
    static constexpr double kDown[] = {0.05, 0.05};
    static constexpr double kUp[] = {20.0, 20.0};
    using Strip = StripProcessorT46;
    const auto s = perLane<N>(strips);
    const Gain<N> gain{outputGain};
    const Amplifier<N> amplifier(s);
    const auto down = stored<N>(Gain<N>{{kDown, 0}}, rows);
    const LowPass1<N> low(s[&Strip::outputLowPass]);
    const Transformer<N> curve;
    const WithHighPass<N> high(s[&Strip::outputHighPass], rows);
    const auto up = stored<N>(Gain<N>{{kUp, 0}}, rows);
    if (strips[0]->ampOn && strips[0]->outputTransformerOn)
        runStages<N>(rows, count, gain, amplifier, down, low, curve, high, up);
    else if (strips[0]->ampOn)
        runStages<N>(rows, count, gain, stored<N>(amplifier, rows));
    else if (strips[0]->outputTransformerOn)
        runStages<N>(rows, count, gain, down, low, curve, high, up);
    else
        runStages<N>(rows, count, stored<N>(gain, rows));
}

template <int N, int... kModes>
constexpr LaneKernels laneKernels(std::integer_sequence<int, kModes...>)
{
    return {preampInput<N>, preampOutput<N>, input<N>, {bands<N, kModes>...}, output<N>};
}

}  // namespace

const LaneKernels kOneLane = laneKernels<1>(std::make_integer_sequence<int, kBandsOff>());
const LaneKernels kTwoLanes = laneKernels<2>(std::make_integer_sequence<int, kBandsOff>());
