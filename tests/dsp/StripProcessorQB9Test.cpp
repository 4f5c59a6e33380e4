// The pre-amplifier strip: rate, setters, polarity and the pair of gain stages.
#include "StripProcessorQB9.h"

#include "Responses.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Samples = std::vector<double>;

// One interface over the double and the float form of the polarity stage.
struct InDoubles {
    using Sample = double;
    static void one(StripProcessorQB9& s, std::vector<Sample>& x)
    {
        s.applyPhase(x.data(), static_cast<int>(x.size()));
    }
    static void linked(StripProcessorQB9& s, std::vector<Sample>& a, std::vector<Sample>& b,
                       int& ia, int& ib)
    {
        s.applyPhaseLinked(a.data(), b.data(), &ia, &ib, static_cast<int>(a.size()));
    }
};
struct InFloats {
    using Sample = float;
    static void one(StripProcessorQB9& s, std::vector<Sample>& x)
    {
        s.applyPhaseFloat(x.data(), static_cast<int>(x.size()));
    }
    static void linked(StripProcessorQB9& s, std::vector<Sample>& a, std::vector<Sample>& b,
                       int& ia, int& ib)
    {
        s.applyPhaseLinkedFloat(a.data(), b.data(), &ia, &ib, static_cast<int>(a.size()));
    }
};

template <class Form>
struct QB9Polarity : testing::Test {
    StripProcessorQB9 strip;
};
using Forms = testing::Types<InDoubles, InFloats>;
TYPED_TEST_SUITE(QB9Polarity, Forms, );

TYPED_TEST(QB9Polarity, FlipsAtTheQuietestSampleWhichAlreadyTakesTheNewPolarity)
{
    using Block = std::vector<typename TypeParam::Sample>;
    this->strip.setPhase(1.0);
    Block x{4, -3, 2, -1, 5, 6};
    TypeParam::one(this->strip, x);
    EXPECT_EQ(x, (Block{4, -3, 2, 1, -5, -6}));
    EXPECT_EQ(this->strip.inverted, 1);
    EXPECT_EQ(this->strip.phaseChangePending, 0);

    Block next{1, 2, 3};
    TypeParam::one(this->strip, next);
    EXPECT_EQ(next, (Block{-1, -2, -3}));  // and stays

    this->strip.setPhase(0.0);
    Block back{4, -3, 2, -1, 5, 6};
    TypeParam::one(this->strip, back);
    EXPECT_EQ(back, (Block{-4, 3, -2, -1, 5, 6}));
    EXPECT_EQ(this->strip.inverted, 0);
}

TYPED_TEST(QB9Polarity, TheFirstOfEqualMinimaWins)
{
    using Block = std::vector<typename TypeParam::Sample>;
    this->strip.setPhase(1.0);
    Block x{4, 5, 6, 1, 7, 8, 9, -1};
    TypeParam::one(this->strip, x);
    EXPECT_EQ(x, (Block{4, 5, 6, -1, -7, -8, -9, 1}));
    this->strip.setPhase(0.0);
    Block level{2, 2, 2};
    TypeParam::one(this->strip, level);
    EXPECT_EQ(level, (Block{2, 2, 2}));  // at index 0: none keeps the old polarity
}

TYPED_TEST(QB9Polarity, LinkedChannelsFlipTogetherWhereTheirSumIsLeastEachItsOwnWay)
{
    using Block = std::vector<typename TypeParam::Sample>;
    int invertedA = 0, invertedB = 1;
    Block a{0, 3, 2, 9}, b{9, 3, 1, -2};  // sums 9, 6, 3, 11; each alone is least elsewhere or here
    this->strip.phaseChangePending = 1;
    TypeParam::linked(this->strip, a, b, invertedA, invertedB);
    EXPECT_EQ(a, (Block{0, 3, -2, -9}));
    EXPECT_EQ(b, (Block{-9, -3, 1, -2}));
    EXPECT_EQ(invertedA, 1);
    EXPECT_EQ(invertedB, 0);
    EXPECT_EQ(this->strip.phaseChangePending, 1);  // the caller's to clear

    Block c{3, 1, 2}, d{0, 2, 1};  // all sums 3: the first
    TypeParam::linked(this->strip, c, d, invertedA, invertedB);
    EXPECT_EQ(c, (Block{3, 1, 2}));
    EXPECT_EQ(d, (Block{0, -2, -1}));
}

TEST(QB9LinkedFloat, TheTwoMagnitudesAreAddedInFloat)
{
    // In float 1e8 + 1 is 1e8, so all three sums are equal and the first wins.
    StripProcessorQB9 strip;
    int ia = 0, ib = 0;
    float a[3] = {1e8f, 1e8f, 1e8f}, b[3] = {1.0f, 0.5f, 0.0f};
    strip.applyPhaseLinkedFloat(a, b, &ia, &ib, 3);
    EXPECT_EQ(b[0], -1.0f);
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

TEST(StripProcessorQB9, LevelsHaveTheirRangeAndTheDriveLeaves31PerMilleOfItsDecibels)
{
    StripProcessorQB9 strip;
    strip.setOutput(0.0);
    EXPECT_NEAR(strip.outputGainTarget, 0.15848931924611134, 1e-15);  // -16 dB
    strip.setOutput(1.0);
    EXPECT_NEAR(strip.outputGainTarget, 6.309573444801933, 1e-14);
    strip.setOutput(0.5 + 1.0 / 3200.0);
    EXPECT_NEAR(decibels(strip.outputGainTarget), 0.01, 1e-12);
    strip.setDrive(0.5);
    EXPECT_EQ(strip.driveGainTarget, 1.0);
    EXPECT_EQ(strip.driveMakeupTarget, 1.0);
    strip.setDrive(1.0);
    EXPECT_NEAR(decibels(strip.driveGainTarget), 16.0, 1e-12);
    EXPECT_NEAR(decibels(strip.driveMakeupTarget), 0.496, 1e-12);
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

TEST(StripProcessorQB9, DriveAndCompensationCancelToTheMakeUpAtEverySampleOfAGlide)
{
    StripProcessorQB9 strip;
    strip.setSampleRate(96000.0);
    strip.setDrive(1.0);
    strip.setOutput(0.25);
    const double coeff = 22.05000114440918 / 96000.0;
    double drive = 1.0, makeup = 1.0, output = 1.0;
    const double driveTo = std::pow(10.0, 0.8), makeupTo = std::pow(10.0, 0.496 / 20.0);
    const double outputTo = std::pow(10.0, -0.4);
    for (int block = 0; block < 200; ++block) {
        Samples x(64, 0.5);
        strip.processInputStage(x.data(), 64);
        Samples driven = x;
        for (std::size_t i = 0; i < 64; ++i) {
            drive += (driveTo - drive) * coeff;
            makeup += (makeupTo - makeup) * coeff;
            ASSERT_NEAR(driven[i], 0.5 * drive, 1e-11);
            ASSERT_NEAR(driven[i] * strip.compensation[i], 0.5 * makeup, 1e-11);
        }
        strip.processOutputStage(x.data(), 64);
        Samples expected(64);
        double m = makeup;
        for (std::size_t i = 64; i-- > 0;) {  // back along the make-up's own curve
            expected[i] = 0.5 * m;
            m = (m - makeupTo * coeff) / (1.0 - coeff);
        }
        for (std::size_t i = 0; i < 64; ++i) {
            output += (outputTo - output) * coeff;
            ASSERT_NEAR(x[i], expected[i] * output, 1e-10);
        }
    }
    EXPECT_GT(drive, 0.9 * driveTo);
}

TEST(StripProcessorQB9, TheHighPassRunsOnTheDrivenSignalAndKeepsItsStepWhenOff)
{
    StripProcessorQB9 strip;
    strip.setSampleRate(96000.0);
    strip.setHpf(1.0);
    const auto h = impulseResponse(
        [&](double* x, int n) {
            for (int at = 0; at < n; at += 64)
                strip.processInputStage(x + at, 64);
        },
        64 * 300);
    for (const double hz : {100.0, 800.0, 10000.0})
        EXPECT_NEAR(std::abs(responseAt(h, hz, 96000.0)
                             - analogueAt(FilterType::HighPass2, 800.0, 0.5, 0.0, hz, 96000.0)),
                    0.0, 1e-10);
    strip.setHpf(0.0);
    EXPECT_EQ(strip.highPass.enabled, 0);
    EXPECT_EQ(strip.highPass.frequency, 800.0);
}

TEST(StripProcessorQB9, TheBoostRaises28kHzBy65dBAndLeavesTheRest)
{
    for (const double rate : {176400.0, 192000.0}) {
        StripProcessorQB9 strip;
        strip.setSampleRate(rate);
        strip.set28k(1.0);
        EXPECT_NEAR(strip.boostGain, 2.1134890, 1e-7);
        const auto h = impulseResponse(
            [&](double* x, int n) {
                for (int at = 0; at < n; at += 64)
                    strip.processInputStage(x + at, 64);
            },
            64 * 100);
        EXPECT_NEAR(decibels(responseAt(h, 28000.0, rate)), 6.5, 1e-9);
        for (const double hz : {50.0, 5000.0, 20000.0, 60000.0}) {
            const Complex band = analogueAt(FilterType::BandPass, 28000.0, 0.6, 0.0, hz, rate);
            EXPECT_NEAR(decibels(responseAt(h, hz, rate)),
                        decibels(1.0 + band * (std::pow(10.0, 0.325) - 1.0)), 1e-9)
                << hz;
        }
        EXPECT_LT(decibels(responseAt(h, 50.0, rate)), 0.001);

        strip.boostBand.y1 = 0.5;
        strip.boostBand.b0 = 42.0;
        strip.set28k(0.7);  // unchanged: nothing is designed again
        EXPECT_EQ(strip.boostBand.b0, 42.0);
        strip.set28k(0.0);
        EXPECT_EQ(strip.boostBand.enabled, 1);  // only no longer called
        double x[1] = {1.0};
        strip.processInputStage(x, 1);
        EXPECT_EQ(x[0], 1.0);
        EXPECT_EQ(strip.boostBand.y1, 0.5);
    }
}

TEST(StripProcessorQB9, ABoostSwitchedOnBeforeTheFirstRateStaysCutShortUntilSwitchedAgain)
{
    StripProcessorQB9 strip;
    strip.set28k(1.0);
    strip.setSampleRate(192000.0);
    EXPECT_DOUBLE_EQ(strip.boostBand.frequency, 44100.0 * 0.499);
    strip.set28k(0.0);
    EXPECT_EQ(strip.boostBand.frequency, 28000.0);
}

TEST(StripProcessorQB9, BadNumbersInItsSettersLeaveTheSignalFinite)
{
    const double inf = std::numeric_limits<double>::infinity();
    for (const double bad : {std::nan(""), inf, -inf, 1e300, -1e300}) {
        StripProcessorQB9 strip;
        strip.setSampleRate(96000.0);
        strip.setDrive(bad);
        strip.setOutput(bad);
        strip.setHpf(bad);
        strip.set28k(bad);
        strip.setPhase(bad);
        Samples x(64, 0.5);
        strip.applyPhase(x.data(), 64);
        strip.processInputStage(x.data(), 64);
        strip.processOutputStage(x.data(), 64);
        for (const double y : x)
            EXPECT_TRUE(std::isfinite(y)) << bad;
    }
}

}  // namespace
