// The strips' filters with a channel in each lane. Local to the file that includes it.
//
// Every lane computes what the plain filter computes, in the same order, but leaves out products
// that are always 0. With finite samples such a term could only change the sign of a zero, and
// adding 1e-36 to every output removes that sign anyway.
//
// step(x, row, ending) filters one row; `ending` is set for the last two rows of a run. A filter
// may make several runs before writeBack() copies its history to the plain filters.
#pragma once

#include "dsp/WetBiquadFilter.h"
#include "dsp/lanes/LaneVectors.h"

namespace {

template <int N>
using Filters = PerLane<N, BiquadFilter>;
template <int N>
using WetFilters = PerLane<N, WetBiquadFilter>;

// The history of a filter. It holds two samples, so only the last two rows of a block are added.
template <int N>
struct History {
    ZKR_INLINE explicit History(const Filters<N>& filters)
        : filters(filters), x1(filters.get(&BiquadFilter::x1)), x2(filters.get(&BiquadFilter::x2)),
          y1(filters.get(&BiquadFilter::y1)), y2(filters.get(&BiquadFilter::y2))
    {
    }
    ZKR_INLINE void add(Vec<N> x, Vec<N> y)
    {
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
    }
    ZKR_INLINE void writeBack() const
    {
        filters.set(&BiquadFilter::x1, x1);
        filters.set(&BiquadFilter::x2, x2);
        filters.set(&BiquadFilter::y1, y1);
        filters.set(&BiquadFilter::y2, y2);
    }

    Filters<N> filters;
    Vec<N> x1, x2, y1, y2;
};

// For stages that do nothing at the end of a run.
struct WithoutRunEnd {
    ZKR_INLINE void endRun() { }
};

template <class Vector>
ZKR_INLINE Vector withoutDenormals(Vector y)
{
    y += 1e-36;
    y -= 1e-36;
    return y;
}

// First order: b1 = b2 = a2 = 0.
template <int N>
struct LowPass1 : WithoutRunEnd {
    ZKR_INLINE explicit LowPass1(const Filters<N>& filters)
        : b0(filters.get(&BiquadFilter::b0)), a1(filters.get(&BiquadFilter::a1)), history(filters),
          y1(history.y1)
    {
    }
    ZKR_INLINE Vec<N> step(Vec<N> x, int, bool ending)
    {
        y1 = withoutDenormals(b0 * x - a1 * y1);
        if (ending)
            history.add(x, y1);
        return y1;
    }
    ZKR_INLINE void writeBack() const { history.writeBack(); }

    Vec<N> b0, a1;
    History<N> history;
    Vec<N> y1;
};

// First order: b1 = -b0, so that b1 * x1 is the negated product b0 * x of the row before;
// b2 = a2 = 0.
template <int N>
struct HighPass1 : WithoutRunEnd {
    ZKR_INLINE explicit HighPass1(const Filters<N>& filters)
        : b0(filters.get(&BiquadFilter::b0)), a1(filters.get(&BiquadFilter::a1)), history(filters),
          bx1(b0 * history.x1), y1(history.y1)
    {
    }
    ZKR_INLINE Vec<N> step(Vec<N> x, int, bool ending)
    {
        const Vec<N> bx = b0 * x;
        y1 = withoutDenormals(bx - bx1 - a1 * y1);
        bx1 = bx;
        if (ending)
            history.add(x, y1);
        return y1;
    }
    ZKR_INLINE void writeBack() const { history.writeBack(); }

    Vec<N> b0, a1;
    History<N> history;
    Vec<N> bx1, y1;
};

// Second order: b1 = 0, b2 = -b0.
template <int N>
struct BandPass : WithoutRunEnd {
    ZKR_INLINE explicit BandPass(const Filters<N>& filters)
        : b0(filters.get(&BiquadFilter::b0)), a1(filters.get(&BiquadFilter::a1)),
          a2(filters.get(&BiquadFilter::a2)), history(filters), bx1(b0 * history.x1),
          bx2(b0 * history.x2), y1(history.y1), y2(history.y2)
    {
    }
    ZKR_INLINE Vec<N> step(Vec<N> x, int, bool ending)
    {
        const Vec<N> bx = b0 * x;
        const Vec<N> y = withoutDenormals(bx - bx2 - a1 * y1 - a2 * y2);
        bx2 = bx1;
        bx1 = bx;
        y2 = y1;
        y1 = y;
        if (ending)
            history.add(x, y);
        return y;
    }
    ZKR_INLINE void writeBack() const { history.writeBack(); }

    Vec<N> b0, a1, a2;
    History<N> history;
    Vec<N> bx1, bx2, y1, y2;
};

// Second order, all coefficients.
template <int N>
struct SecondOrder : WithoutRunEnd {
    ZKR_INLINE explicit SecondOrder(const Filters<N>& filters)
        : b0(filters.get(&BiquadFilter::b0)), b1(filters.get(&BiquadFilter::b1)),
          b2(filters.get(&BiquadFilter::b2)), a1(filters.get(&BiquadFilter::a1)),
          a2(filters.get(&BiquadFilter::a2)), history(filters)
    {
    }
    ZKR_INLINE Vec<N> step(Vec<N> x, int, bool)
    {
        const Vec<N> y = withoutDenormals(b0 * x + b1 * history.x1 + b2 * history.x2
                                          - a1 * history.y1 - a2 * history.y2);
        history.add(x, y);
        return y;
    }
    ZKR_INLINE void writeBack() const { history.writeBack(); }

    Vec<N> b0, b1, b2, a1, a2;
    History<N> history;
};

// A filter blended with its input.
template <int N, class Filter>
struct Wet {
    ZKR_INLINE explicit Wet(const WetFilters<N>& filters)
        : filters(filters), filter(filters.template as<BiquadFilter>()),
          wet(filters.get(&WetBiquadFilter::wetTarget)), dry(1.0 - wet)
    {
    }
    ZKR_INLINE Vec<N> step(Vec<N> x, int row, bool ending)
    {
        return filter.step(x, row, ending) * wet + x * dry;
    }
    ZKR_INLINE void endRun() { }
    ZKR_INLINE void writeBack() const
    {
        filter.writeBack();
        filters.set(&WetBiquadFilter::wetCurrent, wet);
    }

    WetFilters<N> filters;
    Filter filter;
    Vec<N> wet, dry;
};

}  // namespace
