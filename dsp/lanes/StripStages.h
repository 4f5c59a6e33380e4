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
//   1  bell, skirts, band mix *              0    1    2    3   ...  n-2  n-1
//   2  shelf, main filter                         0    1    2   ...  n-3  n-2  n-1
//   3  shelf, skirt, band mix *                        0    1   ...  n-4  n-3  n-2  n-1
//   4  output gain, amplifier *                             0   ...  n-5  n-4  n-3  n-2  n-1
//
// Inside a pass the last stage runs first, before the stage in front of it replaces its output
// (Pipeline::pass). Stages marked * store their output in its row; until then the row holds the
// input of the band, which the band mix reads. The kernel ends when all stages have processed all
// rows: the signal is not delayed.
//
// The passes before pass 4 and from pass n on are bounded passes: some stages have no row there.
// Passes n-2 and n-1 are bounded too, since they begin the last two rows of the block, which the
// filters keep as their history. The passes between need no such tests. Bounded passes are slow, so
// stages that take little time share a row (Both).
//
// Lanes. The same pipelines serve for one, two and four lanes. Four lanes hold two channels of two
// strips, or of both transformers of a strip, each on its own rows:
//
//   next  [ L R ]--pre-amplifier--+                                   (two lanes)
//   body  [ . . | L R ]-----------+--[ input transf. | output transf. ]--+--> out [ L R ]
//   body  [ L R | . . ]--------------------------------------------------+
//                                    [ first strip | second strip ]  damping, bands, amplifier
//                                                     |
//   body  [ L R | L R ]  <----------------------------+               (the new rows)
//
// What moves from lane to lane (BesideLast, WithoutLast) lies between the stages: no recursion waits
// for it.
#pragma once

#include "dsp/AmplifierCurve.h"
#include "dsp/TransformerCurve.h"
#include "dsp/lanes/LaneFilters.h"
#include "dsp/lanes/StripKernels.h"

#include <new>
#include <utility>

namespace {

// The first stage and the pipeline of the others. In a pass the first stage takes row `row`, whose
// samples are `x`, and each later stage one row before its predecessor's; a bounded pass leaves out
// stages whose row lies outside the `count` rows of the block.
template <class Input, class... Stages>
struct Pipeline;

template <class Input>
struct Pipeline<Input> {
    template <bool kBounded>
    ZKR_INLINE void pass(Input, int, int)
    {
    }
    ZKR_INLINE void endRun() { }
    ZKR_INLINE void writeBack() const { }
};

template <class Input, class Stage, class... Rest>
struct Pipeline<Input, Stage, Rest...> {
    using Output = decltype(std::declval<Stage&>().step(std::declval<Input>(), 0, false));

    ZKR_INLINE explicit Pipeline(const Stage& stage, const Rest&... rest)
        : stage(stage), rest(rest...)
    {
    }
    template <bool kBounded>
    ZKR_INLINE void pass(Input x, int row, int count)
    {
        rest.template pass<kBounded>(output, row - 1, count);
        if (!kBounded || (row >= 0 && row < count))
            output = stage.step(x, row, kBounded && row >= count - 2);
    }
    ZKR_INLINE void endRun()
    {
        stage.endRun();
        rest.endRun();
    }
    ZKR_INLINE void writeBack() const
    {
        stage.writeBack();
        rest.writeBack();
    }

    Stage stage;
    Pipeline<Output, Rest...> rest;
    Output output = {};
};

// One run: the first stage reads `count` rows of N samples; a Stored stage writes its output.
template <int N, class... Stages>
ZKR_INLINE void runPipeline(Pipeline<Vec<N>, Stages...>& pipeline, const double* rows, int count)
{
    constexpr int kDelay = sizeof...(Stages) - 1;
    for (int i = 0; i < count + kDelay; ++i) {
        for (; i >= kDelay && i < count - 2; ++i)
            pipeline.template pass<false>(Lanes<N>::load(rows + i * N), i, count);
        const int inside = i < count ? i : 0;
        pipeline.template pass<true>(Lanes<N>::load(rows + inside * N), i, count);
    }
    pipeline.endRun();
}

// A pipeline for a single run.
template <int N, class... Stages>
ZKR_INLINE void runStages(const double* rows, int count, const Stages&... stages)
{
    Pipeline<Vec<N>, Stages...> pipeline(stages...);
    runPipeline<N>(pipeline, rows, count);
    pipeline.writeBack();
}

// A pipeline for many runs, in the memory of a StripPipeline.
template <int N, class... Stages>
ZKR_INLINE void keepStages(StripPipeline& kept, const double* rows, const Stages&... stages)
{
    struct Kept {
        Pipeline<Vec<N>, Stages...> pipeline;
        const double* rows;
    };
    static_assert(sizeof(Kept) <= sizeof kept.memory);
    new (kept.memory) Kept{Pipeline<Vec<N>, Stages...>(stages...), rows};
    kept.run = [](void* memory, int count) {
        Kept& object = *static_cast<Kept*>(memory);
        auto pipeline = object.pipeline;  // a copy that can stay in registers
        runPipeline<N>(pipeline, object.rows, count);
        object.pipeline = pipeline;
    };
    kept.writeBack = [](const void* memory) {
        static_cast<const Kept*>(memory)->pipeline.writeBack();
    };
}

// Two stages in one, for a part of a pipeline that takes little time.
template <class First, class Second>
struct Both {
    template <class Vector>
    ZKR_INLINE auto step(Vector x, int row, bool ending)
    {
        return second.step(first.step(x, row, ending), row, ending);
    }
    ZKR_INLINE void endRun()
    {
        first.endRun();
        second.endRun();
    }
    ZKR_INLINE void writeBack() const
    {
        first.writeBack();
        second.writeBack();
    }

    First first;
    Second second;
};

template <class Stage>
ZKR_INLINE Stage together(const Stage& stage)
{
    return stage;
}

template <class First, class... Others>
ZKR_INLINE auto together(const First& first, const Others&... others)
{
    return Both<First, decltype(together(others...))>{first, together(others...)};
}

// A stage without history.
struct Stateless : WithoutRunEnd {
    ZKR_INLINE void writeBack() const { }
};

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
    ZKR_INLINE void endRun() { stage.endRun(); }
    ZKR_INLINE void writeBack() const { stage.writeBack(); }

    Stage stage;
    double* rows;
};

template <int N>
struct Gain : Stateless {
    ZKR_INLINE explicit Gain(const FactorRows& factors) : factors(factors) { }
    ZKR_INLINE Vec<N> step(Vec<N> x, int row, bool) const { return x * factorOf<N>(factors, row); }

    FactorRows factors;
};

template <int N>
struct Unchanged : Stateless {
    ZKR_INLINE Vec<N> step(Vec<N> x, int, bool) const { return x; }
    ZKR_INLINE void writeBack() const { }
};

template <int N>
struct ConstantGain : Stateless {
    ZKR_INLINE explicit ConstantGain(Vec<N> factor) : factor(factor) { }
    ZKR_INLINE Vec<N> step(Vec<N> x, int, bool) const { return x * factor; }

    Vec<N> factor;
};

template <int N>
ZKR_INLINE Vec<N> compensationOf(Vec<N> drive, Vec<N> makeup)
{
    return 1.0 / drive * makeup;
}

// The drive while it or the output gain glides. Writes the gains that belong to each row.
template <int N>
struct GlidingDrive : WithoutRunEnd {
    using Strip = StripProcessorQB9;

    // As StripProcessorQB9::smoothed.
    struct Smoother {
        ZKR_INLINE void step(Vec<N> coeff)
        {
            current += (target - current) * coeff;
            current += 1e-14;
            current -= 1e-14;
        }
        Vec<N> current, target;
    };

    ZKR_INLINE GlidingDrive(const PerLane<N, Strip>& strips, PreampGains* gains)
        : strips(strips), gains(gains),
          coeff(strips.get(&Strip::smoothingCoeff)), drive{strips.get(&Strip::driveGainCurrent),
                                                           strips.get(&Strip::driveGainTarget)},
          makeup{strips.get(&Strip::driveMakeupCurrent), strips.get(&Strip::driveMakeupTarget)},
          output{strips.get(&Strip::outputGainCurrent), strips.get(&Strip::outputGainTarget)}
    {
    }
    ZKR_INLINE Vec<N> step(Vec<N> x, int row, bool)
    {
        drive.step(coeff);
        makeup.step(coeff);
        output.step(coeff);
        Lanes<N>::store(gains->compensation + row * N,
                        compensationOf<N>(drive.current, makeup.current));
        Lanes<N>::store(gains->output + row * N, output.current);
        return x * drive.current;
    }
    ZKR_INLINE void writeBack() const
    {
        strips.set(&Strip::driveGainCurrent, drive.current);
        strips.set(&Strip::driveMakeupCurrent, makeup.current);
        strips.set(&Strip::outputGainCurrent, output.current);
    }

    PerLane<N, Strip> strips;
    PreampGains* gains;
    Vec<N> coeff;
    Smoother drive, makeup, output;
};

// As shapeTransformer, without a branch: one of the two terms is constant, the other one 0 or
// variable.
template <int N>
struct Transformer : Stateless {
    ZKR_INLINE Vec<N> step(Vec<N> x, int, bool) const
    {
        constexpr Vec<N> kZero = {};
        const Vec<N> a = Lanes<N>::magnitude(x);
        const Vec<N> beyond = Lanes<N>::larger(a - kTransformerKnee, kZero);
        const Vec<N> upTo = Lanes<N>::smaller(a, kZero + kTransformerKnee);
        return Lanes<N>::withSign(transformerCubic(upTo) + beyond * kTransformerSlopeBeyond, x);
    }
    ZKR_INLINE void writeBack() const { }
};

// After a transformer's curve: adds the high-pass part of the row to the shaped low-pass part.
template <int N>
struct WithHighPass : WithoutRunEnd {
    ZKR_INLINE WithHighPass(const Filters<N>& high, const double* rows) : high(high), rows(rows) { }
    ZKR_INLINE Vec<N> step(Vec<N> low, int row, bool ending)
    {
        return low + high.step(Lanes<N>::load(rows + row * N), row, ending);
    }
    ZKR_INLINE void writeBack() const { high.writeBack(); }

    HighPass1<N> high;
    const double* rows;
};

// As compressAmplifier. The part above the knee is left to bendBeyondKnee, since only loud blocks
// need it. A strip without amplifier has no slope.
template <int N>
struct Amplifier {
    // `beyondKnee` tells after a run whether any of its samples lies there.
    ZKR_INLINE Amplifier(const PerLane<N, StripProcessorT46>& s, bool* beyondKnee)
        : slope(s.get(&StripProcessorT46::ampSlope)), bias(s.get(&StripProcessorT46::ampBias)),
          beyondKnee(beyondKnee)
    {
        if (!s.lane[0]->ampOn)
            slope = bias = Vec<N>{};
    }
    ZKR_INLINE Vec<N> step(Vec<N> x, int, bool)
    {
        const Vec<N> v = x / (slope * Lanes<N>::magnitude(x + bias) + 1.0);
        loudest = Lanes<N>::larger(Lanes<N>::magnitude(v), loudest);
        return v;
    }
    ZKR_INLINE void endRun()
    {
        double magnitudes[N];
        Lanes<N>::store(magnitudes, loudest);
        loudest = Vec<N>{};
        *beyondKnee = false;
        for (const double magnitude : magnitudes)
            *beyondKnee |= magnitude > kAmplifierKnee;
    }
    ZKR_INLINE void writeBack() const { }

    Vec<N> slope, bias;
    Vec<N> loudest = {};
    bool* beyondKnee;
};

template <int N>
ZKR_INLINE void bendVector(double* at)
{
    constexpr Vec<N> kZero = {};
    const Vec<N> v = Lanes<N>::load(at);
    const Vec<N> a = Lanes<N>::magnitude(v);
    const Vec<N> excess = a - kAmplifierKnee;
    const Vec<N> exponent = Lanes<N>::smaller(excess, kZero + kAmplifierCurveEnd);
    const Vec<N> bent = excess * powerOfFourFifths(exponent) + kAmplifierKnee;
    Lanes<N>::store(at, a > kAmplifierKnee ? Lanes<N>::withSign(bent, v) : v);
}

// The rest of shapeAmplifier, on `count` outputs of Amplifier.
template <int N>
[[gnu::noinline]] void bendBeyondKnee(double* x, int count)
{
    int i = 0;
    for (; i + N <= count; i += N)
        bendVector<N>(x + i);
    for (; i < count; ++i)
        bendVector<1>(x + i);
}

// The last filter of a band and its mix: row - filtered row * share, where share is 1 - G.
template <int N, class Filter>
struct BandMix {
    ZKR_INLINE Vec<N> step(Vec<N> x, int row, bool ending)
    {
        return Lanes<N>::load(rows + row * N)
            - filter.step(x, row, ending) * factorOf<N>(share, row);
    }
    ZKR_INLINE void endRun() { }
    ZKR_INLINE void writeBack() const { filter.writeBack(); }

    Filter filter;
    FactorRows share;
    const double* rows;
};

// The pre-amplifier's boost at 28 kHz.
template <int N>
struct Boost : WithoutRunEnd {
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

// Puts the last strip's samples beside those of two lanes.
template <int kLanes>
struct BesideLast : Stateless {
    ZKR_INLINE explicit BesideLast(const double* body) : body(body) { }
    ZKR_INLINE Vec<4> step(Vec<2> x, int row, bool) const
    {
        const Vec<2> last = Lanes<2>::load(body + row * kLanes + kLanes - 2);
        return __builtin_shufflevector(x, last, 0, 1, 2, 3);
    }

    const double* body;
};

// The opposite: stores the samples of the upper two lanes, and puts the strips behind the first one
// beside those of the lower two. Their samples are those of the strip in front in `body`.
template <int kLanes>
struct WithoutLast : Stateless {
    ZKR_INLINE WithoutLast(const double* body, double* out) : body(body), out(out) { }
    ZKR_INLINE Vec<kLanes> step(Vec<4> x, int row, bool) const
    {
        Lanes<2>::store(out + row * 2, __builtin_shufflevector(x, x, 2, 3));
        const Vec<2> first = __builtin_shufflevector(x, x, 0, 1);
        if constexpr (kLanes == 2)
            return first;
        else
            return __builtin_shufflevector(first, Lanes<2>::load(body + row * kLanes), 0, 1, 2, 3);
    }

    const double* body;
    double* out;
};

template <int N, class Stage>
ZKR_INLINE Stored<N, Stage> stored(const Stage& stage, double* rows)
{
    return {stage, rows};
}

}  // namespace
