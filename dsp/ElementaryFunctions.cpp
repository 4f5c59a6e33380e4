// All but the power are those of the xsimd library for SSE2, which every processor of this
// architecture has; a library function for the processor at hand could round otherwise elsewhere.
#include "dsp/ElementaryFunctions.h"

#include <cmath>
#include <xsimd/xsimd.hpp>

namespace elementary {

namespace {

using Vector = xsimd::batch<double, xsimd::sse2>;

// The unevaluated sum of two numbers, the second far below the first.
struct DoubleDouble {
    double high, low;
};

// Exact for |a| >= |b| (Dekker 1971).
DoubleDouble sum(double a, double b)
{
    const double high = a + b;
    return {high, b - (high - a)};
}

// The upper 26 bits and the rest (Veltkamp 1968).
DoubleDouble halves(double a)
{
    const double scaled = 134217729.0 * a;  // 2^27 + 1
    const double high = scaled - (scaled - a);
    return {high, a - high};
}

// Exact (Dekker 1971).
DoubleDouble product(double a, double b)
{
    const DoubleDouble p = halves(a), q = halves(b);
    const double high = a * b;
    return {high, ((p.high * q.high - high) + p.high * q.low + p.low * q.high) + p.low * q.low};
}

// With x = m * 2^n and s = (m - 1) / (m + 1), |s| <= 0.172:
// log x = n log 2 + 2s + 2s^3 / 3 + 2s^5 / 5 + ...
DoubleDouble extendedLogarithm(double x)
{
    constexpr double kRootOfHalf = 0.70710678118654757;
    constexpr double kLog2High = 0.69314718055989033, kLog2Low = 5.4979230187083712e-14;
    int n = 0;
    double m = std::frexp(x, &n);
    if (m < kRootOfHalf) {
        m *= 2.0;
        --n;
    }
    const double difference = m - 1.0;  // exact
    const DoubleDouble divisor = m < 1.0 ? sum(1.0, m) : sum(m, 1.0);
    const double s = difference / divisor.high;
    const DoubleDouble back = product(s, divisor.high);
    const double rest = ((difference - back.high) - back.low - s * divisor.low) / divisor.high;

    const double z = s * s;
    double series = 0.0;
    for (int k = 21; k >= 3; k -= 2)
        series = series * z + 2.0 / k;
    const double high = n * kLog2High;  // exact: the constant has 42 bits
    const DoubleDouble total = n == 0 ? DoubleDouble{2.0 * s, 0.0} : sum(high, 2.0 * s);
    return sum(total.high, total.low + (2.0 * rest + (s * z * series + n * kLog2Low)));
}

}  // namespace

double sine(double x)
{
    return xsimd::sin(Vector(x)).get(0);
}

double cosine(double x)
{
    return xsimd::cos(Vector(x)).get(0);
}

double logarithm(double x)
{
    return xsimd::log(Vector(x)).get(0);
}

double decimalLogarithm(double x)
{
    return xsimd::log10(Vector(x)).get(0);
}

double powerOfTen(double exponent)
{
    return xsimd::exp10(Vector(exponent)).get(0);
}

// The logarithm carries some 20 bits more than a double, since the exponential multiplies its error
// by its magnitude.
double power(double x, double exponent)
{
    const DoubleDouble log = extendedLogarithm(x);
    const DoubleDouble p = product(exponent, log.high);
    const DoubleDouble total = sum(p.high, p.low + exponent * log.low);
    const double result = xsimd::exp(Vector(total.high)).get(0);
    return result + result * total.low;
}

}  // namespace elementary
