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
