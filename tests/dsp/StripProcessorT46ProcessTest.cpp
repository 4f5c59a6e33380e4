// The equaliser strip's audio path.
#include "AmplifierCurve.h"
#include "Responses.h"
#include "StripProcessorT46.h"
#include "TransformerCurve.h"

#include <gtest/gtest.h>

#include <algorithm>

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

// One-pole filters in the form y += (x - y) (1 - p) and its bilinear complement, and the stages one
// after the other as they stand in the signal's road.
TEST(T46Process, LoudSignalsMeetTransformersAndAmplifierInTheirOrder)
{
    const double rate = 88200.0;
    struct LowPass {
        double pole, y = 0.0;
        double operator()(double x) { return y = (1.0 - pole) * x + pole * y; }
    };
    struct HighPass {
        double k, x1 = 0.0, y = 0.0;
        double operator()(double x)
        {
            y = (1.0 + k) / 2.0 * (x - x1) + k * y;
            x1 = x;
            return y;
        }
    };
    const auto low = [&](double hz) {
        return LowPass{std::exp(-2.0 * std::asinh(std::sin(kPi * hz / rate)))};
    };
    const auto high = [&](double hz) {
        const double t = std::tan(kPi * hz / rate);
        return HighPass{(1.0 - t) / (1.0 + t)};
    };
    const auto bend = [](double v) {
        const double a = std::min(std::fabs(v), 20.37);
        const double r = a * (0.998081 + a * (0.000705321 - 0.000824844 * a))
            + 0.00333 * std::max(0.0, std::fabs(v) - 20.37);
        return v < 0.0 ? -r : r;
    };
    StripProcessorT46 strip;
    strip.setSampleRate(rate);
    strip.setProcessOn(0.0f);  // the colour stays without the bands
    auto inLow = low(50.0), outLow = low(30.0);
    auto inHigh = high(50.0), outHigh = high(30.0), dc = high(5.0);
    auto top1 = low(rate * 0.499), top2 = top1;
    const double wet = static_cast<double>(0.9f) * 0.5;
    for (int n = 0; n < 20000; ++n) {
        const double in = 40.0 * std::sin(2.0 * kPi * 23.0 / rate * n) + 5.0 * std::sin(0.9 * n);
        double x = bend(inLow(in)) + inHigh(in);
        x = dc(x);
        x = top1(x) * wet + x * (1.0 - wet);
        x = top2(x) * wet + x * (1.0 - wet);
        x = shapeAmplifier(x, kSlope, 0.25);
        x *= 0.05;
        x = (bend(outLow(x)) + outHigh(x)) * 20.0;
        double block = in;
        strip.process(&block, 1);
        ASSERT_NEAR(block, x, 1e-8) << n;
    }
}

// At 0 dB a band is a wire, whatever its filters hold, so only the ramps of the band gain and of
// the output gain can be heard from there on, sample by sample.
TEST(T46Process, AGainChangeMovesNoFasterThanItsLinearRampOf150Milliseconds)
{
    const double rate = 48000.0;
    StripProcessorT46 moved, still;
    for (StripProcessorT46* strip : {&moved, &still}) {
        strip->setInputTransformerDisable(1.0);
        strip->setOutputTransformerDisable(1.0);
        strip->setAmpDisable(1.0);
        strip->setMidFrequency(4.0 / 9.0);
        strip->setSampleRate(rate);
        strip->damping.setAmount(0.0f);
    }
    const int warm = 4800, length = 7200;
    std::vector<double> a(static_cast<std::size_t>(warm + length + 2400));
    for (std::size_t n = 0; n < a.size(); ++n)
        a[n] = std::sin(2.0 * kPi * 3000.0 / rate * static_cast<double>(n));
    std::vector<double> b = a;
    still.process(b.data(), static_cast<int>(b.size()));
    moved.process(a.data(), warm);
    moved.setMidGain(1.0);
    moved.damping.setAmount(0.0f);  // the top end does change at once; it is not the subject here
    const double bandRamp = (moved.midGainTarget - 1.0) / length;
    const double outputRamp = (moved.outputGainTarget - 1.0) / length;
    double last = 0.0;
    for (int n = 0; n < length + 2400; ++n) {
        const std::size_t i = static_cast<std::size_t>(warm + n);
        moved.process(&a[i], 1);
        const double k = std::min(n + 1, length);
        ASSERT_NEAR(moved.midGain, 1.0 + bandRamp * k, 1e-10) << n;
        ASSERT_NEAR(moved.outputGain, 1.0 + outputRamp * k, 1e-10) << n;
        const double difference = a[i] - b[i];
        // Band and output gain multiply; 5 % for the band-pass while it settles on its new Q.
        const double reached = (1.0 + bandRamp * k) * (1.0 + outputRamp * k) - 1.0;
        ASSERT_LE(std::fabs(difference), 1.05 * reached + 1e-9) << n;
        last = std::max(last * 0.999, std::fabs(difference));
    }
    EXPECT_EQ(moved.gainRampCount, 0);
    EXPECT_EQ(moved.midGain, moved.midGainTarget);
    EXPECT_GT(last, 4.0);  // and it did move: 15.52 dB and 1.66 dB at the centre
}

TEST(T46Process, ProcessOffFreezesTheRampAndItGoesOnWhereItStood)
{
    StripProcessorT46 strip;
    strip.setMidFrequency(1.0);
    strip.setMidGain(1.0);
    double block[64] = {};
    strip.process(block, 64);
    strip.processOn = 0;  // without an update, which would start the ramp anew
    const double gainThen = strip.midGain;
    strip.process(block, 64);
    EXPECT_EQ(strip.gainRampCount, 14400 - 64);
    EXPECT_EQ(strip.midGain, gainThen);
    strip.processOn = 1;
    strip.process(block, 1);
    EXPECT_EQ(strip.midGain, gainThen + strip.midGainStep);
}

TEST(T46Process, NoBandAppliesNoOutputGainButKeepsTheRampMoving)
{
    StripProcessorT46 plain, ramping;
    ramping.outputGain = 3.0;
    ramping.update();
    double a[32] = {0.5, 0.25, -1.0}, b[32] = {0.5, 0.25, -1.0};
    plain.process(a, 32);
    ramping.process(b, 32);
    EXPECT_TRUE(std::equal(a, a + 32, b));
    EXPECT_EQ(ramping.gainRampCount, 14400 - 32);
    EXPECT_LT(ramping.outputGain, 3.0);
}

TEST(T46Process, OnlyTheNineteenPossibleCombinationsSoundAndAnyOtherMutes)
{
    const std::vector<int> possible{0,  1,  2,  3,  4,  6,  8,  9,  10, 11,
                                    12, 14, 16, 17, 20, 24, 25, 28, 32};
    for (int mode = -2; mode < 70; ++mode) {
        StripProcessorT46 strip;
        strip.setInputTransformerDisable(1.0);
        strip.setOutputTransformerDisable(1.0);
        strip.bandMode = mode;
        double block[3] = {0.5, 0.25, -1.0};
        strip.process(block, 3);
        const bool expected = std::count(possible.begin(), possible.end(), mode) > 0;
        EXPECT_EQ(block[0] != 0.0, expected) << mode;
        EXPECT_EQ(block[2] != 0.0, expected) << mode;
    }
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
    const double before = block[0];
    strip.process(block, 0);
    strip.process(block, -5);
    EXPECT_EQ(block[0], before);
}

}  // namespace
