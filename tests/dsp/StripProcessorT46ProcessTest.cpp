// The equaliser strip's audio path.
#include "dsp/AmplifierCurve.h"
#include "dsp/StripProcessorT46.h"
#include "dsp/TransformerCurve.h"
#include "tests/dsp/Responses.h"

#include <gtest/gtest.h>

namespace {

constexpr double kSlope = 0.0030506097302936833;

TEST(TransformerCurve, IsOddMeetsItsKneeAndGoesOnAlmostFlat)
{
    EXPECT_NEAR(shapeTransformer(1.0), 0.997961477, 1e-12);
    EXPECT_EQ(shapeTransformer(20.37), 13.651773893805768);
    EXPECT_NEAR(shapeTransformer(std::nextafter(20.37, 30.0)), 13.651773893805768, 1e-12);
    EXPECT_NEAR(shapeTransformer(120.37), 13.651773893805768 + 0.333, 1e-12);
    for (const double v : {0.0, 0.5, 7.0, 20.37, 25.0, 1e6})
        EXPECT_EQ(shapeTransformer(-v), -shapeTransformer(v));
}

TEST(AmplifierCurve, BendsFoldsAt28AndIsStraightFrom7)
{
    const double slope = 1.0 / (1.0 + kSlope * 0.25);
    EXPECT_EQ(shapeAmplifier(0.0, kSlope, 0.25), 0.0);
    EXPECT_NEAR(shapeAmplifier(1e-7, kSlope, 0.25) / 1e-7, slope, 1e-9);
    EXPECT_GT(-shapeAmplifier(-1.0, kSlope, 0.25), shapeAmplifier(1.0, kSlope, 0.25));
    // Without the bend (slope 0) the second half of the curve stands alone.
    EXPECT_EQ(shapeAmplifier(2.8, 0.0, 0.25), 2.8);
    EXPECT_NEAR(shapeAmplifier(2.8 + 1e-9, 0.0, 0.25), 2.8, 2e-9);
    EXPECT_NEAR(shapeAmplifier(-3.8, 0.0, 0.25), -(2.8 + 0.8), 1e-12);
    const double straight = std::pow(0.8, 4.2);
    EXPECT_NEAR(shapeAmplifier(7.0 - 1e-9, 0.0, 0.25), 2.8 + 4.2 * straight, 1e-8);
    EXPECT_NEAR(shapeAmplifier(7.0, 0.0, 0.25), 2.8 + 4.2 * straight, 1e-12);
    EXPECT_NEAR(shapeAmplifier(7.1, 0.0, 0.25), 2.8 + 4.3 * straight, 1e-12);
    EXPECT_NEAR(shapeAmplifier(-17.0, 0.0, 0.25), -(2.8 + 14.2 * straight), 1e-12);
}

TEST(T46Process, GainsMoveInLinearRampsOf150MillisecondsAndOnlyWithTheProcess)
{
    StripProcessorT46 strip;
    strip.setMidFrequency(4.0 / 9.0);
    strip.setSampleRate(48000.0);
    strip.setMidGain(1.0);
    const double bandRamp = (strip.midGainTarget - 1.0) / 7200.0;
    const double outputRamp = (strip.outputGainTarget - 1.0) / 7200.0;
    ASSERT_GT(bandRamp, 0.0);
    ASSERT_GT(outputRamp, 0.0);
    double block[64] = {};
    strip.processOn = 0;  // set without an update, which would restart the ramp
    strip.process(block, 64);
    strip.processOn = 1;
    for (int n = 0; n <= 7200; ++n) {
        ASSERT_NEAR(strip.midGain, 1.0 + bandRamp * n, 1e-10) << n;
        ASSERT_NEAR(strip.outputGain, 1.0 + outputRamp * n, 1e-10) << n;
        strip.process(block, 1);
    }
    EXPECT_EQ(strip.gainRampCount, 0);
    EXPECT_EQ(strip.midGain, strip.midGainTarget);
    EXPECT_EQ(strip.outputGain, strip.outputGainTarget);

    strip.lowGain = strip.lowGainTarget * (1.0 + 1e-12);
    strip.update();
    const double tiny = (strip.lowGainTarget - strip.lowGain) / 7200.0;
    EXPECT_NE(tiny, flushed(tiny, 1e-14));
    EXPECT_EQ(strip.lowGainStep, flushed(tiny, 1e-14));
}

TEST(T46Process, StagesOutOfCircuitKeepTheirHistories)
{
    StripProcessorT46 strip;
    strip.setHighFrequency(1.0);
    strip.setHighGain(0.8);
    double block[8] = {1.0, -1.0, 0.5};
    strip.process(block, 8);
    const double transformer = strip.inputLowPass.y1, band = strip.highBell.main.y1;
    EXPECT_NE(transformer, 0.0);
    EXPECT_NE(band, 0.0);
    strip.setInputTransformerDisable(1.0);
    strip.setHighFrequency(0.0);
    strip.process(block, 8);
    EXPECT_EQ(strip.inputLowPass.y1, transformer);
    EXPECT_EQ(strip.highBell.main.y1, band);
}

}  // namespace
