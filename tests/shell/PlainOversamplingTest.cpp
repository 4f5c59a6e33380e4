// The taps of the oversampling filters.
#include "shell/oversampling/PlainOversampling.h"

#include <gtest/gtest.h>

#include <numeric>
#include <utility>

TEST(Interpolator, TapsAtEvenDistancesFromTheCentreAreZero)
{
    const PlainOversampling oversampling;
    for (int i = -62; i <= 62; i += 2)
        EXPECT_DOUBLE_EQ(oversampling.upStage1Coeffs[63 + i], i == 0 ? 1.0 : 0.0) << i;
    for (int i = -126; i <= 126; i += 2)
        EXPECT_DOUBLE_EQ(oversampling.upStage2Coeffs[127 + i], i == 0 ? 1.0 : 0.0) << i;
}

// The filters' gain. Any changed tap shows in it.
TEST(Decimator, TapsAddUpToTheirSum)
{
    for (const auto& [half, sum] :
         {std::pair(down2xCoeffs, 1.000234739969064), std::pair(down4xCoeffs, 1.0022839337255172)})
        EXPECT_NEAR(2.0 * std::accumulate(half, half + kDecimationTaps - 1, 0.0)
                        + half[kDecimationTaps - 1],
                    sum, 1e-12);
}
