// What an update hands to the sections and the gain ramp, by combination of bands.
#include "StripProcessorT46.h"
#include "StripResponse.h"

#include <gtest/gtest.h>

namespace {

void set(StripProcessorT46& strip, const UpdateCase& c)
{
    strip.setLowShelf(c.bandMode & 1 ? 1.0 : 0.0);
    strip.setHighShelf(c.bandMode & 2 ? 1.0 : 0.0);
    strip.setLowFrequency(stepPosition(kLow, c.low.stepHz));
    strip.setMidFrequency(stepPosition(kMid, c.mid.stepHz));
    strip.setHighFrequency(stepPosition(kHigh, c.high.stepHz));
    strip.setLowGain(knob(c.low.knobDb));
    strip.setMidGain(knob(c.mid.knobDb));
    strip.setHighGain(knob(c.high.knobDb));
}

void expectShelf(const BandCase& c, const ShelfSection& section, double gainTarget)
{
    EXPECT_NEAR(section.frequency / c.frequency, 1.0, 1e-9);
    EXPECT_NEAR(section.skirtMix, c.lowMix, 1e-9);
    EXPECT_NEAR(section.skirtRatio / c.lowRatio, 1.0, 1e-8);
    EXPECT_NEAR(gainTarget, gain(c.gainDb), 1e-8);
    EXPECT_EQ(section.main.enabled, 1);
    EXPECT_EQ(section.main.limitBias, 0.09);
    EXPECT_EQ(section.main.limitEnabled, 0);
}

void expectBell(const BandCase& c, const PeakSection& section, double gainTarget)
{
    EXPECT_NEAR(section.frequency / c.frequency, 1.0, 1e-9);
    EXPECT_NEAR(section.q / c.q, 1.0, 1e-9);
    EXPECT_NEAR(section.highSkirtMix, c.highMix, 1e-9);
    EXPECT_NEAR(section.highSkirtRatio / c.highRatio, 1.0, 1e-8);
    EXPECT_NEAR(section.lowSkirtMix, c.lowMix, 1e-9);
    EXPECT_NEAR(section.lowSkirtRatio / c.lowRatio, 1.0, 1e-8);
    EXPECT_NEAR(gainTarget, gain(c.gainDb), 1e-8);
    EXPECT_EQ(section.lowSkirt.enabled, 1);
    EXPECT_EQ(section.main.limitBias, 0.09);
    EXPECT_EQ(section.main.limitEnabled, 0);
}

TEST(T46Update, EveryCombinationHandsItsSectionsTheWorkedValues)
{
    for (const UpdateCase& c : kUpdateCases) {
        SCOPED_TRACE(testing::Message() << "mode " << c.bandMode << ": " << c.low.stepHz << ", "
                                        << c.mid.stepHz << ", " << c.high.stepHz);
        StripProcessorT46 strip;
        set(strip, c);
        ASSERT_EQ(strip.bandMode, c.bandMode);
        EXPECT_NEAR(strip.outputGainTarget, c.outputGain, 1e-9);
        EXPECT_NEAR(strip.dampingAmount, c.damping, 1e-9);
        if (c.bandMode & 1)
            expectShelf(c.low, strip.lowShelf, strip.lowGainTarget);
        if (c.bandMode & 2)
            expectShelf(c.high, strip.highShelf, strip.highGainTarget);
        if (c.bandMode & 4)
            expectBell(c.low, strip.lowBell, strip.lowGainTarget);
        if (c.bandMode & 8)
            expectBell(c.mid, strip.midBell, strip.midGainTarget);
        if (c.bandMode & 16)
            expectBell(c.high, strip.highBell, strip.highGainTarget);
    }
}

TEST(T46Update, TheMeasuredResponseOfEveryCombinationIsThatOfTheAnalogueFilters)
{
    for (const double rate : {88200.0, 176400.0, 192000.0}) {
        for (const UpdateCase& c : kUpdateCases) {
            SCOPED_TRACE(testing::Message() << "mode " << c.bandMode << " at " << rate);
            StripProcessorT46 strip;
            strip.setInputTransformerDisable(1.0);
            strip.setOutputTransformerDisable(1.0);
            strip.setAmpDisable(1.0);
            set(strip, c);
            strip.setSampleRate(rate);
            const auto h = impulseResponse([&](double* x, int n) { strip.process(x, n); },
                                           static_cast<int>(rate * 1.5));
            for (const double hz : {20.0, 90.0, 400.0, 1500.0, 5000.0, 12000.0, 21000.0})
                EXPECT_NEAR(decibels(responseAt(h, hz, rate)), decibels(stripAt(c, hz, rate)), 1e-5)
                    << hz << " Hz";
        }
    }
}

TEST(T46Update, SmallSignalsPassTheWholeStripWithOnlyTheSlopesOfItsCurvesAdded)
{
    const double rate = 176400.0;
    const UpdateCase& c = kUpdateCases.back();
    StripProcessorT46 strip;
    set(strip, c);
    strip.setSampleRate(rate);
    const double height = 1e-4;
    const auto h = impulseResponse([&](double* x, int n) { strip.process(x, n); },
                                   static_cast<int>(rate * 1.5), height);
    for (const double hz : {20.0, 100.0, 1000.0, 15000.0})
        EXPECT_NEAR(decibels(responseAt(h, hz, rate) / height),
                    decibels(smallSignalAt(c, hz, rate)), 1e-4)
            << hz;
}

// The irregular rows, each from the models and interactions alone.

struct TwoBands : testing::Test {
    void setBands(double lowHz, double lowDb, double midHz, double midDb, double highHz,
                  double highDb, double lowShelf, double highShelf)
    {
        strip.setLowShelf(lowShelf);
        strip.setHighShelf(highShelf);
        strip.setLowFrequency(stepPosition(kLow, lowHz));
        strip.setMidFrequency(stepPosition(kMid, midHz));
        strip.setHighFrequency(stepPosition(kHigh, highHz));
        strip.setLowGain(knob(lowDb));
        strip.setMidGain(knob(midDb));
        strip.setHighGain(knob(highDb));
    }
    StripProcessorT46 strip;
};

TEST_F(TwoBands, ShelvesAloneTellEachOtherTheGainOfTheModelNotOfTheKnob)
{
    setBands(300, 4, 0, 0, 6800, 8, 1.0, 1.0);  // the model of 6800 Hz makes 8.4888 dB of 8
    const double x = 300.0 / 6800.0;
    EXPECT_DOUBLE_EQ(strip.lowShelf.skirtMix, shelfInteraction(x, 4.0, 8.0 * 1.0611).mix);
    EXPECT_NE(strip.lowShelf.skirtMix, shelfInteraction(x, 4.0, 8.0).mix);

    // A low bell beside the same shelf hears 8 dB.
    setBands(300, 4, 0, 0, 6800, 8, 0.0, 1.0);
    double q = 1.0, db = 4.0 * 0.97;
    EXPECT_DOUBLE_EQ(strip.lowBell.lowSkirtMix, bellInteraction(x, q, db, 8.0).mix);
}

TEST_F(TwoBands, LowShelfAndMidBellMixTheirOutputGains80To20)
{
    setBands(63, 16, 3000, 16, 0, 0, 1.0, 0.0);  // 1.85 dB and 1.66 dB of output gain
    EXPECT_NEAR(strip.outputGainTarget, gain(1.85) * 0.8 + gain(1.66) * 0.2, 1e-12);
    setBands(0, 0, 3000, 16, 10000, 16, 0.0, 1.0);  // 1.66 dB and 0.32 dB, geometric
    EXPECT_NEAR(strip.outputGainTarget, gain((1.66 + 0.32) / 2.0), 1e-12);
}

TEST_F(TwoBands, MidAndHighBellLeaveTheUpperSkirtAtTheBandsLowerEdge)
{
    setBands(0, 0, 3000, 8, 12000, 8, 0.0, 0.0);
    double q = 1.0, db = 8.0 * 1.0544;
    const Skirt skirt = bellInteraction(0.25, q, db, 8.0);
    EXPECT_LT(skirt.ratio, 1.0);  // inverted it would move the skirt
    EXPECT_GT(strip.highBell.highSkirtMix, 0.0);
    EXPECT_EQ(strip.highBell.highSkirtRatio, 1.0);
    setBands(550, 8, 680, 8, 0, 0, 0.0, 0.0);  // other bells do invert it
    EXPECT_GT(strip.midBell.highSkirtRatio, 1.0);
}

TEST_F(TwoBands, ThreeBandsSumToATimes033NotAThird)
{
    setBands(300, 0, 3000, 0, 10000, 0, 1.0, 1.0);
    EXPECT_NEAR(strip.outputGainTarget, 0.99, 1e-12);
    EXPECT_NEAR(strip.dampingAmount, (0.8 + 0.75 + 0.8) * 0.33, 1e-12);
}

TEST_F(TwoBands, OfThreeBandsBothOuterOnesSeeEachOtherThroughTheLowFrequency)
{
    setBands(300, 6, 3000, 6, 12000, 6, 1.0, 1.0);
    const double lowX = 300.0 / 3000.0 + 150.0 / 12000.0;
    const double highX = 3000.0 / 12000.0 + 150.0 / 12000.0;
    EXPECT_DOUBLE_EQ(strip.lowShelf.skirtMix, shelfInteraction(lowX, 6.0, 6.0).mix);
    EXPECT_DOUBLE_EQ(strip.highShelf.skirtMix, shelfInteraction(highX, 6.0 * 1.0544, 6.0).mix);
}

TEST(T46Update, ProcessOffIsDullerThanNoBandsAndRunsNoModel)
{
    StripProcessorT46 strip;
    strip.setMidFrequency(1.0);
    strip.setMidGain(0.9);
    const double hz = strip.midBell.frequency;
    strip.setProcessOn(0.0f);
    EXPECT_EQ(strip.bandMode, 32);
    EXPECT_EQ(strip.dampingAmount, 0.9);
    EXPECT_EQ(strip.outputGainTarget, 1.0);
    strip.setMidFrequency(0.5);
    EXPECT_EQ(strip.midBell.frequency, hz);
    strip.setProcessOn(0.5f);
    EXPECT_NE(strip.midBell.frequency, hz);
}

TEST(T46Update, ABandOutOfCircuitAimsAt102PercentOfItsKnob)
{
    StripProcessorT46 strip;
    strip.setLowGain(knob(10.0));
    strip.setMidGain(knob(-5.0));
    strip.setHighGain(knob(3.0));
    EXPECT_DOUBLE_EQ(strip.lowGainTarget, gain(10.2));
    EXPECT_DOUBLE_EQ(strip.midGainTarget, gain(-5.1));
    EXPECT_DOUBLE_EQ(strip.highGainTarget, gain(3.06));
}

TEST(T46Update, TheRampStartsFromTheGainInForceAndATinyStepIsFlushed)
{
    StripProcessorT46 strip;
    strip.setMidFrequency(1.0);
    strip.midGain = 1.5;
    strip.lowGain = strip.lowGainTarget * (1.0 + 1e-12);
    strip.setMidGain(1.0);
    EXPECT_EQ(strip.gainRampCount, strip.gainRampLength);
    EXPECT_NEAR(strip.midGainStep, (strip.midGainTarget - 1.5) / 14400.0, 1e-18);
    const double raw = (strip.lowGainTarget - strip.lowGain) / 14400.0;
    EXPECT_NE(raw, flushed(raw, 1e-14));
    EXPECT_EQ(strip.lowGainStep, flushed(raw, 1e-14));

    strip.setSampleRate(96000.0);
    strip.update();  // nothing moved: the ramp runs again with no step
    EXPECT_EQ(strip.gainRampCount, 14400);
    EXPECT_EQ(strip.midGainStep, 0.0);
}

}  // namespace
