// The elementary functions against the long double ones of the C library.
#include "dsp/ElementaryFunctions.h"
#include "dsp/AmplifierCurve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

// The distance in units of the last place of the exact value's neighbour.
long double unitsBetween(double value, long double exact)
{
    int exponent = 0;
    std::frexp(static_cast<double>(exact), &exponent);
    return std::fabs(static_cast<long double>(value) - exact) / std::ldexp(1.0L, exponent - 53);
}

// sin(x + quarters * pi / 2) for 0 .. 2 pi by its series. Some C libraries reduce x by a value of
// pi with too few bits.
long double exactSine(long double x, int quarters)
{
    constexpr long double kQuarterHigh = 0x1.921fb54440000p0,
                          kQuarterLow =
                              2.563344151594518788188942e-12L;  // pi / 2; the first has 39 bits
    const auto n = static_cast<int>(std::round(x / kQuarterHigh));
    const long double r = (x - n * kQuarterHigh) - n * kQuarterLow;
    const int quadrant = (n + quarters) % 4;
    long double term = quadrant % 2 == 0 ? r : 1.0L, sum = term;
    for (int k = quadrant % 2 == 0 ? 3 : 2; k < 26; k += 2) {
        term *= -r * r / (k * (k - 1));
        sum += term;
    }
    return quadrant < 2 ? sum : -sum;
}

struct Function {
    const char* name;
    double lowest, highest;
    std::function<double(double)> value;
    std::function<long double(long double)> exact;
};

Function powerRow(double exponent, double highest)
{
    return {"power", 1e-9, highest, [exponent](double x) { return elementary::power(x, exponent); },
            [exponent](long double x) { return std::pow(x, static_cast<long double>(exponent)); }};
}

TEST(ElementaryFunctions, AreWithinTwoUnitsInTheLastPlace)
{
    constexpr double kPi = 3.14159265358979323846;
    const auto power10 = [](long double x) { return std::pow(10.0L, x); };
    const Function functions[] = {
        {"sine", 1e-9, kPi - 1e-3, elementary::sine, [](long double x) { return exactSine(x, 0); }},
        {"cosine", 1e-9, 2.0 * kPi, elementary::cosine,
         [](long double x) { return exactSine(x, 1); }},
        {"logarithm", 1e-9, 1e3, elementary::logarithm, [](long double x) { return std::log(x); }},
        {"decimalLogarithm", 1.0, 300.0, elementary::decimalLogarithm,
         [](long double x) { return std::log10(x); }},
        {"powerOfTen", -14.0, 14.0, elementary::powerOfTen, power10},
        {"powerOfTen", 1e-9, 1.0, elementary::powerOfTen, power10},
        {"0.8^x", 0.0, kAmplifierCurveEnd, powerOfFourFifths<double>,
         [](long double x) { return std::pow(0.8L, x); }},
        powerRow(2.8, 1.0),
        powerRow(3.5, 1.0),
        powerRow(4.0, 1.0),
        powerRow(6.0, 1.0),
        powerRow(8.0, 1.0),
        powerRow(0.75, 1000.0),
    };
    constexpr int kPoints = 100000;
    for (const Function& f : functions)
        for (const bool evenRatios : {false, true}) {
            if (evenRatios && !(f.lowest > 0.0))
                continue;
            long double worst = 0.0L;
            for (int i = 0; i <= kPoints; ++i) {
                const double part = static_cast<double>(i) / kPoints;
                const double x = evenRatios ? f.lowest * std::pow(f.highest / f.lowest, part)
                                            : f.lowest + (f.highest - f.lowest) * part;
                worst = std::max(worst, unitsBetween(f.value(x), f.exact(x)));
            }
            EXPECT_LE(worst, 2.0L) << f.name << " up to " << f.highest;
        }
    EXPECT_EQ(elementary::powerOfTen(0.0), 1.0);
    EXPECT_EQ(powerOfFourFifths(0.0), 1.0);
}

}  // namespace
