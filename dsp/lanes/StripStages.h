// The stages that the fast strips are made of, and the pipeline that runs several of them at a
// time. Local to the file that includes it.
#pragma once

#include "AmplifierCurve.h"
#include "LaneFilters.h"
#include "StripKernels.h"
#include "TransformerCurve.h"

namespace {

// Stages in a row, each one row behind the one before:
//
//   pass i     row i -> stage 0     row i - 1 -> stage 1     row i - 2 -> stage 2 ...
//
// so that nothing in a pass waits for anything else in it. The first passes have rows for the first
// stages only and the last passes for the last ones; these are the bounded passes.
template <int N, class... Stages>
struct Pipeline;

template <int N>
struct Pipeline<N> {
    template <bool kBounded>
    ZKR_INLINE void pass(Vec<N>, int, int)
    {
    }
    ZKR_INLINE void leave() const { }
};

template <int N, class Stage, class... Rest>
struct Pipeline<N, Stage, Rest...> {
    ZKR_INLINE explicit Pipeline(const Stage& first, const Rest&... later)
        : stage(first), rest(later...)
    {
    }
    template <bool kBounded>
    ZKR_INLINE void pass(Vec<N> x, int row, int count)
    {
        rest.template pass<kBounded>(made, row - 1, count);
        if (!kBounded || (row >= 0 && row < count))
            made = stage.step(x, row, kBounded && row >= count - 2);
    }
    ZKR_INLINE void leave() const
    {
        stage.leave();
        rest.leave();
    }

    Stage stage;
    Pipeline<N, Rest...> rest;
    Vec<N> made = {};
};

// The first stage takes `count` rows of N samples; the last one, or one on the way, stores them.
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
    pipeline.leave();
}

template <int N>
ZKR_INLINE Vec<N> factorOf(const FactorRows& factors, int row)
{
    return Lanes<N>::load(factors.at + row * factors.stride);
}

// What the stage makes goes into the row; the end of a pipeline, or where a later stage wants it.
template <int N, class Stage>
struct Stored {
    ZKR_INLINE Stored(const Stage& last, double* to) : stage(last), rows(to) { }
    ZKR_INLINE Vec<N> step(Vec<N> x, int row, bool keep)
    {
        const Vec<N> y = stage.step(x, row, keep);
        Lanes<N>::store(rows + row * N, y);
        return y;
    }
    ZKR_INLINE void leave() const { stage.leave(); }

    Stage stage;
    double* rows;
};

template <int N>
struct Gain {
    ZKR_INLINE Vec<N> step(Vec<N> x, int row, bool) const { return x * factorOf<N>(factors, row); }
    ZKR_INLINE void leave() const { }

    FactorRows factors;
};

// As shapeTransformer; rows beyond the knee are rare.
template <int N>
struct TransformerCurve {
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
    ZKR_INLINE void leave() const { }
};

// Behind a transformer's curve: the high-pass half of the row joins the bent low-pass half.
template <int N>
struct WithHighPass {
    ZKR_INLINE WithHighPass(const Filters<N>& f, const double* from) : high(f), rows(from) { }
    ZKR_INLINE Vec<N> step(Vec<N> low, int row, bool keep)
    {
        return low + high.step(Lanes<N>::load(rows + row * N), row, keep);
    }
    ZKR_INLINE void leave() const { high.leave(); }

    HighPass1<N> high;
    const double* rows;
};

// Takes values, so that the stage that calls it can stay in registers.
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
    ZKR_INLINE explicit Amplifier(const Each<N, StripProcessorT46>& s)
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
    ZKR_INLINE void leave() const { }

    Vec<N> slope, bias;
};

// The last filter of a band, and the band itself: row - filtered row * share, where share is 1 - G.
template <int N, class Filter>
struct Mixed {
    ZKR_INLINE Vec<N> step(Vec<N> x, int row, bool keep)
    {
        return Lanes<N>::load(rows + row * N) - filter.step(x, row, keep) * factorOf<N>(share, row);
    }
    ZKR_INLINE void leave() const { filter.leave(); }

    Filter filter;
    FactorRows share;
    const double* rows;
};

template <int N>
struct Boost {
    ZKR_INLINE explicit Boost(const Each<N, StripProcessorQB9>& s)
        : band(s[&StripProcessorQB9::boostBand]), share(1.0 - s.get(&StripProcessorQB9::boostGain))
    {
    }
    ZKR_INLINE Vec<N> step(Vec<N> x, int row, bool keep)
    {
        return x - band.step(x, row, keep) * share;
    }
    ZKR_INLINE void leave() const { band.leave(); }

    BandPass<N> band;
    Vec<N> share;
};

template <int N, class Stage>
ZKR_INLINE Stored<N, Stage> stored(const Stage& stage, double* rows)
{
    return {stage, rows};
}

}  // namespace
