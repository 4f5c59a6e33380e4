// The filters built on BiquadFilter, and the sections built on those.
#include "dsp/PeakSection.h"
#include "dsp/ShelfSection.h"
#include "dsp/TrackedBiquadFilter.h"
#include "tests/dsp/Responses.h"

#include <gtest/gtest.h>

namespace {

constexpr double kRate = 96000.0;

TEST(WetBiquadFilter, TheMixIsClampedAndGlidesAndTheFilterRunsAlsoWhenDry)
{
    WetBiquadFilter filter(20000.0, FilterType::LowPass1, 500.0, 1.0, 0.0);
    filter.setWet(7.0);
    EXPECT_EQ(filter.wetTarget, 1.0);
    filter.setWet(-1.0);
    EXPECT_EQ(filter.wetTarget, 0.0);
    filter.setEnabled(1);
    EXPECT_EQ(filter.processSample(0.75), 0.75);
    EXPECT_NE(filter.y1, 0.0);
    filter.instant = false;
    filter.setWet(0.6);
    for (int n = 0; n < 1500; ++n)
        filter.processSample(0.0);
    EXPECT_NEAR(filter.wetCurrent, 0.3, 1e-12);
    for (int n = 0; n < 1501; ++n)
        filter.processSample(0.0);
    EXPECT_EQ(filter.wetCurrent, 0.6);
}

TEST(TrackedBiquadFilter, AFrequencyClampedAtALowRateIsRestoredAtAHigherOne)
{
    TrackedBiquadFilter filter(kRate, 71355.0);
    filter.setFrequency(1e9);
    EXPECT_DOUBLE_EQ(filter.frequency, 47904.0);
    filter.setSampleRate(192000.0);
    EXPECT_DOUBLE_EQ(filter.frequency, 95808.0);
    EXPECT_EQ(filter.requestedFrequency, 1e9);
}

TEST(ShelfSection, IsItsFilterAndABlendedSecondOneAtTheSkirtsFrequency)
{
    ShelfSection section(kRate, FilterType::LowPass1);
    section.setEnabled();
    section.setFrequency(800.0);
    section.setSkirt(0.4, 2.5);
    const auto h = impulseResponse(section, 8000);
    for (const double hz : {50.0, 800.0, 5000.0}) {
        const Complex expected =
            lowPass1At(800.0, hz, kRate) * blended(lowPass1At(2000.0, hz, kRate), 0.4);
        EXPECT_NEAR(std::abs(responseAt(h, hz, kRate) - expected), 0.0, 1e-10);
    }
}

TEST(ShelfSection, TheSkirtsMixAndFrequencyAreLimited)
{
    ShelfSection section(kRate, FilterType::LowPass1);
    section.setFrequency(100.0);
    section.setSkirt(1.7, 1000.0);
    EXPECT_EQ(section.skirtMix, 1.0);
    EXPECT_NEAR(section.skirt.frequency, 100.0 * 7.87 * 4.0, 1e-9);
    section.setSkirt(-0.1, -3.0);
    EXPECT_EQ(section.skirtMix, 0.0);
    EXPECT_NEAR(section.skirt.frequency, 100.0 * 0.127 * 0.25, 1e-9);
    EXPECT_EQ(section.skirtRatio, -3.0);  // stored unclamped
}

TEST(PeakSection, IsABandPassWithBlendedSkirtsScaledFromItsEdges)
{
    PeakSection section(kRate, FilterType::BandPass);
    section.setEnabled();
    section.setFrequency(1000.0);
    section.setQ(1.0);
    section.setHighSkirt(0.3, 1.5);
    section.setLowSkirt(0.8, 0.5);
    const double golden = (1.0 + std::sqrt(5.0)) / 2.0;
    const double highHz = 1000.0 * (golden - 1.0) * 1.5, lowHz = 1000.0 * golden * 0.5;
    const auto h = impulseResponse(section, 20000);
    for (const double hz : {200.0, 1000.0, 6000.0}) {
        const Complex expected = analogueAt(FilterType::BandPass, 1000.0, 1.0, hz, kRate)
            * blended(lowPass1At(lowHz, hz, kRate), 0.8)
            * blended(highPass1At(highHz, hz, kRate), 0.3);
        EXPECT_NEAR(std::abs(responseAt(h, hz, kRate) - expected), 0.0, 1e-10);
    }
}

TEST(PeakSection, RatiosMoveASkirtOnlyInwardsAndAtMostTwoOctavesBeyondTheOtherEdge)
{
    PeakSection section(kRate, FilterType::BandPass);
    section.setFrequency(1000.0);
    section.setQ(1.0);
    section.setHighSkirt(0.5, 0.3);
    section.setLowSkirt(0.5, 3.0);
    EXPECT_EQ(section.highSkirtRatio, 1.0);
    EXPECT_EQ(section.lowSkirtRatio, 1.0);
    section.setHighSkirt(-1.0, 1e30);
    section.setLowSkirt(2.0, -1e30);
    EXPECT_EQ(section.highSkirtMix, 0.0);
    EXPECT_EQ(section.lowSkirtMix, 1.0);
    EXPECT_NEAR(section.highSkirt.frequency, 1618.0339887498949 * 4.0, 1e-9);
    EXPECT_NEAR(section.lowSkirt.frequency, 618.0339887498949 * 0.25, 1e-9);
    section.edgesOnly = true;
    section.setFrequency(1000.0);
    EXPECT_NEAR(section.highSkirt.frequency, 618.0339887498949, 1e-9);
    EXPECT_NEAR(section.lowSkirt.frequency, 1618.0339887498949, 1e-9);
}

}  // namespace
