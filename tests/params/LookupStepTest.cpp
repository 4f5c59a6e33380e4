// lookupStep: which step of a table a knob position picks.
#include "params/lookup/LookupStep.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr double kTen[] = {-1, 11, 22, 33, 44, 55, 66, 77, 88, 99};

TEST(LookupStep, TheMidpointBetweenTwoStepsTakesTheUpperAndLessTakesTheLower)
{
    // Steps lie at ninths, so the borders are the odd multiples of 1/18.
    for (int i = 0; i < 9; ++i) {
        SCOPED_TRACE(i);
        const double border = (2 * i + 1) / 18.0;
        EXPECT_EQ(lookupStep(kTen, 10, i / 9.0), kTen[i]);
        EXPECT_EQ(lookupStep(kTen, 10, border), kTen[i + 1]);
        EXPECT_EQ(lookupStep(kTen, 10, border - 1e-12), kTen[i]);
    }
}

TEST(LookupStep, PositionsOutsideTheTravelTakeTheStepAtThatEnd)
{
    for (const double high : {1.0, 1.0000001, 3.0, 1e300, double{INFINITY}})
        EXPECT_EQ(lookupStep(kTen, 10, high), 99);
    for (const double low : {0.0, -0.0, -0.06, -3.0, -1e300, -double{INFINITY}, double{NAN}})
        EXPECT_EQ(lookupStep(kTen, 10, low), -1);
    EXPECT_EQ(lookupStep(kTen, 1, 0.7), -1);
}

}  // namespace
