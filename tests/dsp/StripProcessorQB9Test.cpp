// The pre-amplifier strip: polarity, rate and what its setters leave alone.
#include "StripProcessorQB9.h"

#include "Responses.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

template <class Sample>
void flip(StripProcessorQB9& strip, std::vector<Sample>& x)
{
    const int n = static_cast<int>(x.size());
    if constexpr (std::is_same_v<Sample, float>)
        strip.applyPhaseFloat(x.data(), n);
    else
        strip.applyPhase(x.data(), n);
}

template <class Sample>
void flipLinked(StripProcessorQB9& strip, std::vector<Sample>& a, std::vector<Sample>& b,
                int (&inverted)[2])
{
    const int n = static_cast<int>(a.size());
    if constexpr (std::is_same_v<Sample, float>)
        strip.applyPhaseLinkedFloat(a.data(), b.data(), &inverted[0], &inverted[1], n);
    else
        strip.applyPhaseLinked(a.data(), b.data(), &inverted[0], &inverted[1], n);
}

template <class Sample>
struct QB9Polarity : testing::Test {
    StripProcessorQB9 strip;
};
using Samples = testing::Types<double, float>;
TYPED_TEST_SUITE(QB9Polarity, Samples, );

TYPED_TEST(QB9Polarity, FlipsAtTheQuietestSampleWhichAlreadyTakesTheNewPolarity)
{
    using Block = std::vector<TypeParam>;
    const struct {
        const char* name;
        double phase;
        Block in, out;
    } rows[] = {
        {"on", 1.0, {4, -3, 2, -1, 5, 6}, {4, -3, 2, 1, -5, -6}},
        {"stays", 1.0, {1, 2, 3}, {-1, -2, -3}},
        {"off", 0.0, {4, -3, 2, -1, 5, 6}, {-4, 3, -2, -1, 5, 6}},
        {"first of two", 1.0, {4, 5, 6, 1, 7, 8, 9, -1}, {4, 5, 6, -1, -7, -8, -9, 1}},
        {"at index 0", 0.0, {2, 2, 2}, {2, 2, 2}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Block x = row.in;
        this->strip.setPhase(row.phase);
        flip(this->strip, x);
        EXPECT_EQ(x, row.out);
        EXPECT_EQ(this->strip.inverted, static_cast<int>(row.phase));
        EXPECT_EQ(this->strip.phaseChangePending, 0);
    }
}

TYPED_TEST(QB9Polarity, LinkedChannelsFlipTogetherWhereTheirSumIsLeastEachItsOwnWay)
{
    using Block = std::vector<TypeParam>;
    int inverted[2] = {0, 1};
    Block a{0, 3, 2, 9}, b{9, 3, 1, -2};  // sums 9, 6, 3, 11; each alone is least elsewhere or here
    this->strip.phaseChangePending = 1;
    flipLinked(this->strip, a, b, inverted);
    EXPECT_EQ(a, (Block{0, 3, -2, -9}));
    EXPECT_EQ(b, (Block{-9, -3, 1, -2}));
    EXPECT_EQ(inverted[0], 1);
    EXPECT_EQ(inverted[1], 0);
    EXPECT_EQ(this->strip.phaseChangePending, 1);  // the caller's to clear

    // In float all three sums are 1e8, so the first wins.
    Block loud{1e8, 1e8, 1e8}, soft{1.0, 0.5, 0.0};
    flipLinked(this->strip, loud, soft, inverted);
    EXPECT_EQ(soft[0], sizeof(TypeParam) == sizeof(float) ? -1 : 1);
}

TEST(StripProcessorQB9, ARateChangeAppliesAWaitingPolarityAndEndsEveryGlide)
{
    StripProcessorQB9 strip;
    strip.setPhase(1.0);
    strip.setDrive(1.0);
    strip.setOutput(0.0);
    strip.setSampleRate(176400.0);
    EXPECT_EQ(strip.inverted, 1);
    EXPECT_EQ(strip.phaseChangePending, 0);
    EXPECT_NEAR(strip.smoothingCoeff, 22.05000114440918 / 176400.0, 1e-18);
    EXPECT_EQ(strip.outputGainCurrent, strip.outputGainTarget);
    EXPECT_EQ(strip.driveGainCurrent, strip.driveGainTarget);
    EXPECT_EQ(strip.driveMakeupCurrent, strip.driveMakeupTarget);
    for (const double c : strip.compensation)
        EXPECT_EQ(c, 1.0 / strip.driveGainTarget);  // without the make-up
    EXPECT_EQ(strip.highPass.sampleRate, 176400.0);
    EXPECT_EQ(strip.boostBand.sampleRate, 176400.0);
    strip.setSampleRate(48000.0);
    EXPECT_EQ(strip.inverted, 1);
}

TEST(StripProcessorQB9, WhatLiesFarBelowHearingIsCutOffInEverySmoother)
{
    StripProcessorQB9 strip;
    const double tiny = 1e-20, cut = flushed(tiny, 1e-14);
    ASSERT_NE(cut, tiny);
    strip.driveGainCurrent = strip.driveGainTarget = tiny;
    strip.driveMakeupCurrent = strip.driveMakeupTarget = tiny;
    strip.outputGainCurrent = strip.outputGainTarget = tiny;
    double x = 1.0;
    strip.processInputStage(&x, 1);
    strip.processOutputStage(&x, 1);
    EXPECT_EQ(strip.driveGainCurrent, cut);
    EXPECT_EQ(strip.driveMakeupCurrent, cut);
    EXPECT_EQ(strip.outputGainCurrent, cut);
}

TEST(StripProcessorQB9, TheBoostIsDesignedWhenSwitchedAndOnlyThen)
{
    StripProcessorQB9 strip;
    strip.set28k(1.0);
    strip.setSampleRate(192000.0);
    EXPECT_DOUBLE_EQ(strip.boostBand.frequency, 44100.0 * 0.499);  // cut short at the first rate
    strip.boostBand.b0 = 42.0;
    strip.set28k(0.7);  // as it is already
    EXPECT_EQ(strip.boostBand.b0, 42.0);
    strip.boostBand.y1 = 0.5;
    strip.set28k(0.0);
    EXPECT_EQ(strip.boostBand.frequency, 28000.0);
    EXPECT_EQ(strip.boostBand.enabled, 1);  // only no longer called
    double x = 1.0;
    strip.processInputStage(&x, 1);
    EXPECT_EQ(x, 1.0);
    EXPECT_EQ(strip.boostBand.y1, 0.5);
}

}  // namespace
