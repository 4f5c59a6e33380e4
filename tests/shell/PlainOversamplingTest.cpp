// The taps of the oversampling filters.
#include "shell/oversampling/PlainOversampling.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numeric>
#include <vector>

namespace {

constexpr double kPi = 3.14159265358979323846;

std::vector<double> wholeFilter(const double* half)
{
    std::vector<double> taps(half, half + kDecimationTaps);
    for (int k = kDecimationTaps - 2; k >= 0; --k)
        taps.push_back(half[k]);
    return taps;
}

double magnitude(const std::vector<double>& taps, double cyclesPerSample)
{
    std::complex<double> sum = 0.0;
    for (std::size_t k = 0; k < taps.size(); ++k)
        sum += taps[k] * std::polar(1.0, -2.0 * kPi * cyclesPerSample * static_cast<double>(k));
    return std::abs(sum);
}

}  // namespace

TEST(Interpolator, TapsAtEvenDistancesFromTheCentreAreZero)
{
    const PlainOversampling oversampling;
    for (int i = -62; i <= 62; i += 2)
        EXPECT_DOUBLE_EQ(oversampling.upStage1Coeffs[63 + i], i == 0 ? 1.0 : 0.0) << i;
    for (int i = -126; i <= 126; i += 2)
        EXPECT_DOUBLE_EQ(oversampling.upStage2Coeffs[127 + i], i == 0 ? 1.0 : 0.0) << i;
}

TEST(Decimator, TablesMeetTheirEdgesRippleAndSum)
{
    const struct {
        const double* half;
        double passEdge, stopEdge, ripple, stopPeak, halfPoint, sum;
    } designs[] = {{down2xCoeffs, 0.2417, 0.2620, 0.000236, 1.0e-5, 0.2505, 1.000234739969064},
                   {down4xCoeffs, 0.1198, 0.1344, 0.00229, 9.8e-5, 0.126, 1.0022839337255172}};
    for (const auto& design : designs) {
        const std::vector<double> taps = wholeFilter(design.half);
        SCOPED_TRACE(design.sum);
        ASSERT_EQ(taps.size(), 255u);
        // Tight, so that any changed tap shows in the sum.
        EXPECT_NEAR(std::accumulate(taps.begin(), taps.end(), 0.0), design.sum, 1e-12);
        // The edges are rounded outwards by up to 5e-5, so the ripple is checked just inside them.
        for (double f = 0.0; f <= design.passEdge - 1e-4; f += 1e-4)
            ASSERT_NEAR(magnitude(taps, f), 1.0, design.ripple * 1.02) << f;
        for (double f = design.stopEdge + 1e-4; f <= 0.5; f += 1e-4)
            ASSERT_LT(magnitude(taps, f), design.stopPeak * 1.02) << f;
        EXPECT_NEAR(magnitude(taps, design.halfPoint), 0.5, 0.02);
    }
}
