// Vectors with a channel in each lane, and their operations. Local to the file that includes it.
#pragma once

#define ZKR_INLINE [[gnu::always_inline]] inline

namespace {

template <int N>
struct Lanes {
    using Vector [[gnu::vector_size(8 * N)]] = double;
    using Bits [[gnu::vector_size(8 * N)]] = long long;
    using Unaligned [[gnu::vector_size(8 * N), gnu::aligned(8), gnu::may_alias]] = double;

    ZKR_INLINE static Vector load(const double* p)
    {
        return *reinterpret_cast<const Unaligned*>(p);
    }
    ZKR_INLINE static void store(double* p, Vector v) { *reinterpret_cast<Unaligned*>(p) = v; }

    ZKR_INLINE static Vector magnitude(Vector v)
    {
        return reinterpret_cast<Vector>(reinterpret_cast<Bits>(v) & kMagnitude);
    }
    // `size` is not negative.
    ZKR_INLINE static Vector withSign(Vector size, Vector sign)
    {
        return reinterpret_cast<Vector>(reinterpret_cast<Bits>(size)
                                        | (reinterpret_cast<Bits>(sign) & ~kMagnitude));
    }
    ZKR_INLINE static Vector larger(Vector a, Vector b) { return a > b ? a : b; }
    ZKR_INLINE static Vector smaller(Vector a, Vector b) { return a < b ? a : b; }

    static constexpr long long kMagnitude = 0x7fffffffffffffff;
};

template <>
struct Lanes<1> {
    using Vector = double;

    ZKR_INLINE static double load(const double* p) { return *p; }
    ZKR_INLINE static void store(double* p, double v) { *p = v; }
    ZKR_INLINE static double magnitude(double v) { return __builtin_fabs(v); }
    ZKR_INLINE static double withSign(double size, double sign)
    {
        return __builtin_copysign(size, sign);
    }
    ZKR_INLINE static double larger(double a, double b) { return a > b ? a : b; }
    ZKR_INLINE static double smaller(double a, double b) { return a < b ? a : b; }
};

template <int N>
using Vec = typename Lanes<N>::Vector;

// The same object of each lane's strip: a filter, a section, or the strip itself.
template <int N, class Object>
struct PerLane {
    template <class Member>
    ZKR_INLINE PerLane<N, Member> operator[](Member Object::*member) const
    {
        PerLane<N, Member> all;
        for (int k = 0; k < N; ++k)
            all.lane[k] = &(lane[k]->*member);
        return all;
    }
    template <class Base>
    ZKR_INLINE PerLane<N, Base> as() const
    {
        PerLane<N, Base> all;
        for (int k = 0; k < N; ++k)
            all.lane[k] = lane[k];
        return all;
    }
    ZKR_INLINE Vec<N> get(double Object::*value) const
    {
        if constexpr (N == 1) {
            return lane[0]->*value;
        } else {
            Vec<N> values{};
            for (int k = 0; k < N; ++k)
                values[k] = lane[k]->*value;
            return values;
        }
    }
    ZKR_INLINE void set(double Object::*value, Vec<N> v) const
    {
        double values[N];
        Lanes<N>::store(values, v);
        for (int k = 0; k < N; ++k)
            lane[k]->*value = values[k];
    }

    Object* lane[N];
};

template <int N, class Object>
ZKR_INLINE PerLane<N, Object> perLane(Object* const* objects)
{
    PerLane<N, Object> all;
    for (int k = 0; k < N; ++k)
        all.lane[k] = objects[k];
    return all;
}

}  // namespace
