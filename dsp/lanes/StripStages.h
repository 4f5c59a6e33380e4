// The stages that the lane kernels are made of, and the pipeline that runs several of them at a
// time. Local to the file that includes it.
//
// A filter's output depends on its output for the row before, through four or five dependent
// operations. If all stages processed the same row in turn, each would also depend on the stage
// before it, and a row would take the sum of their times. So each stage works one row behind the
// stage before it, on that stage's output of the pass before: within a pass no stage depends on
// another one, and the pass takes about as long as its slowest stage.
//
// The rows that each stage works on, in the kernel of the bands with the mid bell and the low shelf
// in circuit, on a block of n rows:
//
//   stage                          pass 0    1    2    3    4   ...  n-1   n   n+1  n+2  n+3
//   0  bell, main filter                0    1    2    3    4   ...  n-1
//   1  bell, low skirt                       0    1    2    3   ...  n-2  n-1
//   2  bell, high skirt, band mix *               0    1    2   ...  n-3  n-2  n-1
//   3  shelf, main filter                              0    1   ...  n-4  n-3  n-2  n-1
//   4  shelf, skirt, band mix *                             0   ...  n-5  n-4  n-3  n-2  n-1
//
// Inside a pass the last stage runs first, before the stage in front of it replaces its output
// (Pipeline::pass). Stages marked * store their output in its row; until then the row holds the
// input of the band, which the band mix reads. The kernel ends when all stages have processed all
// rows: the signal is not delayed.
//
// The passes before pass 4 and from pass n on are bounded passes: some stages have no row there.
// Passes n-2 and n-1 are bounded too, since they begin the last two rows of the block, which the
// filters keep as their history. The passes between need no such tests.
#pragma once

#include "dsp/AmplifierCurve.h"
#include "dsp/TransformerCurve.h"
#include "dsp/lanes/LaneFilters.h"
#include "dsp/lanes/StripKernels.h"

namespace {

// The first stage and the pipeline of the others. In a pass the first stage takes row `row`, whose
// samples are `x`, and each later stage one row before its predecessor's; a bounded pass leaves out
// stages whose row lies outside the `count` rows of the block.
template <int N, class... Stages>
struct Pipeline;

template <int N>
struct Pipeline<N> {
    template <bool kBounded>
    ZKR_INLINE void pass(Vec<N>, int, int)
    {
    }
    ZKR_INLINE void writeBack() const { }
};

template <int N, class Stage, class... Rest>
struct Pipeline<N, Stage, Rest...> {
    ZKR_INLINE explicit Pipeline(const Stage& stage, const Rest&... rest)
        : stage(stage), rest(rest...)
    {
    }
    template <bool kBounded>
    ZKR_INLINE void pass(Vec<N> x, int row, int count)
    {
        rest.template pass<kBounded>(output, row - 1, count);
        if (!kBounded || (row >= 0 && row < count))
            output = stage.step(x, row, kBounded && row >= count - 2);
    }
    ZKR_INLINE void writeBack() const
    {
        stage.writeBack();
        rest.writeBack();
    }

    Stage stage;
    Pipeline<N, Rest...> rest;
    Vec<N> output = {};
};

// The first stage reads `count` rows of N samples; a Stored stage writes them.
template <int N, class... Stages>
ZKR_INLINE void runStages(const double* rows, int count, const Stages&... stages)
{
    constexpr int kDelay = sizeof...(Stages) - 1;
    Pipeline<N, Stages...> pipeline(stages...);
    for (int i = 0; i < count + kDelay; ++i) {
        for (; i >= kDelay && i < count - 2; ++i)
            pipeline.template pass<false>(Lanes<N>::load(rows + i * N), i, count);
        const int inside = i < count ? i : 0;
        pipeline.template pass<true>(Lanes<N>::load(rows + inside * N), i, count);
    }
    pipeline.writeBack();
}

template <int N>
ZKR_INLINE Vec<N> factorOf(const FactorRows& factors, int row)
{
    return Lanes<N>::load(factors.at + row * factors.stride);
}

// Stores the stage's output in its row: the last stage always, an earlier one if a later stage
// reads the row.
template <int N, class Stage>
struct Stored {
    ZKR_INLINE Stored(const Stage& stage, double* rows) : stage(stage), rows(rows) { }
    ZKR_INLINE Vec<N> step(Vec<N> x, int row, bool ending)
    {
        const Vec<N> y = stage.step(x, row, ending);
        Lanes<N>::store(rows + row * N, y);
        return y;
    }
    ZKR_INLINE void writeBack() const { stage.writeBack(); }

    Stage stage;
    double* rows;
};

template <int N>
struct Gain {
    ZKR_INLINE Vec<N> step(Vec<N> x, int row, bool) const { return x * factorOf<N>(factors, row); }
    ZKR_INLINE void writeBack() const { }

    FactorRows factors;
};

// As shapeTransformer; rows beyond the knee are rare.
template <int N>
struct Transformer {
    ZKR_INLINE Vec<N> step(Vec<N> x, int, bool) const
    {
        const Vec<N> a = Lanes<N>::magnitude(x);
        const Vec<N> cubic = transformerCubic(a);
        if (__builtin_expect(!Lanes<N>::anyAbove(a, kTransformerKnee), 1))
            return Lanes<N>::withSign(cubic, x);
        const Vec<N> straight =
            transformerCubic(kTransformerKnee) + (a - kTransformerKnee) * kTransformerSlopeBeyond;
        return Lanes<N>::withSign(a <= kTransformerKnee ? cubic : straight, x);
    }
    ZKR_INLINE void writeBack() const { }
};

// After a transformer's curve: adds the high-pass part of the row to the shaped low-pass part.
template <int N>
struct WithHighPass {
    ZKR_INLINE WithHighPass(const Filters<N>& high, const double* rows) : high(high), rows(rows) { }
    ZKR_INLINE Vec<N> step(Vec<N> low, int row, bool ending)
    {
        return low + high.step(Lanes<N>::load(rows + row * N), row, ending);
    }
    ZKR_INLINE void writeBack() const { high.writeBack(); }

    HighPass1<N> high;
    const double* rows;
};

// Its arguments are values, so that the calling stage can stay in registers.
[[gnu::noinline, gnu::cold]] inline double shapeLoudRow(double x, double slope, double bias)
{
    return shapeAmplifier(x, slope, bias);
}

[[gnu::noinline, gnu::cold]] inline Vec<2> shapeLoudRow(Vec<2> x, Vec<2> slope, Vec<2> bias)
{
    return Vec<2>{shapeAmplifier(x[0], slope[0], bias[0]), shapeAmplifier(x[1], slope[1], bias[1])};
}

// As shapeAmplifier; rows beyond the knee are rare.
template <int N>
struct Amplifier {
    ZKR_INLINE explicit Amplifier(const PerLane<N, StripProcessorT46>& s)
        : slope(s.get(&StripProcessorT46::ampSlope)), bias(s.get(&StripProcessorT46::ampBias))
    {
    }
    ZKR_INLINE Vec<N> step(Vec<N> x, int, bool) const
    {
        const Vec<N> v = x / (slope * Lanes<N>::magnitude(x + bias) + 1.0);
        if (__builtin_expect(!Lanes<N>::anyAbove(Lanes<N>::magnitude(v), kAmplifierKnee), 1))
            return v;
        return shapeLoudRow(x, slope, bias);
    }
    ZKR_INLINE void writeBack() const { }

    Vec<N> slope, bias;
};

// The last filter of a band and its mix: row - filtered row * share, where share is 1 - G.
template <int N, class Filter>
struct BandMix {
    ZKR_INLINE Vec<N> step(Vec<N> x, int row, bool ending)
    {
        return Lanes<N>::load(rows + row * N)
            - filter.step(x, row, ending) * factorOf<N>(share, row);
    }
    ZKR_INLINE void writeBack() const { filter.writeBack(); }

    Filter filter;
    FactorRows share;
    const double* rows;
};

// The pre-amplifier's boost at 28 kHz.
template <int N>
struct Boost {
    ZKR_INLINE explicit Boost(const PerLane<N, StripProcessorQB9>& s)
        : band(s[&StripProcessorQB9::boostBand]), share(1.0 - s.get(&StripProcessorQB9::boostGain))
    {
    }
    ZKR_INLINE Vec<N> step(Vec<N> x, int row, bool ending)
    {
        return x - band.step(x, row, ending) * share;
    }
    ZKR_INLINE void writeBack() const { band.writeBack(); }

    BandPass<N> band;
    Vec<N> share;
};

template <int N, class Stage>
ZKR_INLINE Stored<N, Stage> stored(const Stage& stage, double* rows)
{
    return {stage, rows};
}

}  // namespace
