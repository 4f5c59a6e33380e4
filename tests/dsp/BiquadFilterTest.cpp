// BiquadFilter alone: responses, limits, glide, limiter and denormals.
#include "dsp/BiquadFilter.h"

#include "tests/dsp/Responses.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

BiquadFilter designed(double rate, FilterType type, double hz, double q, double db = 0.0)
{
    BiquadFilter filter(rate, type, hz, q, db);
    filter.setEnabled(1);
    return filter;
}

TEST(BiquadFilter, EveryResponseIsItsAnaloguePrototypeWithTheNarrowedQ)
{
    for (const FilterType type : {FilterType::HighPass1, FilterType::LowPass1,
                                  FilterType::HighPass2, FilterType::BandPass}) {
        for (const double rate : {44100.0, 96000.0, 192000.0}) {
            for (const double corner : {150.0, 5000.0, 0.42 * rate}) {
                for (const double q : {0.6, 2.5}) {
                    SCOPED_TRACE(testing::Message() << "type " << static_cast<int>(type) << ", "
                                                    << corner << " Hz at " << rate);
                    BiquadFilter filter = designed(rate, type, corner, q);
                    const auto h = impulseResponse(filter, static_cast<int>(rate * 0.3));
                    for (const double hz : {20.0, corner * 0.5, corner, corner * 1.1, 0.47 * rate})
                        EXPECT_NEAR(std::abs(responseAt(h, hz, rate)
                                             - analogueAt(type, corner, q, hz, rate)),
                                    0.0, 1e-9)
                            << hz << " Hz";
                }
            }
        }
    }
}

TEST(BiquadFilter, DisabledPassesItsInputAndClearsItsState)
{
    for (const bool bySample : {true, false}) {
        SCOPED_TRACE(bySample);
        BiquadFilter filter = designed(48000.0, FilterType::LowPass2, 500.0, 2.0);
        double samples[] = {0.1, -0.7, 5.0};
        filter.process(samples, 3);
        EXPECT_NE(filter.y2, 0.0);
        filter.setEnabled(0);
        double x = 0.25;
        if (bySample)
            x = filter.processSample(x);
        else
            filter.process(&x, 1);
        EXPECT_EQ(x, 0.25);
        for (const double past : {filter.x1, filter.x2, filter.y1, filter.y2})
            EXPECT_EQ(past, 0.0);
        EXPECT_EQ(filter.b0, 1.0);  // the design, too, passes the input through
        EXPECT_EQ(filter.a1, 0.0);
    }
}

TEST(BiquadFilter, NoneAndUnknownResponsesChangeNothing)
{
    for (const int type : {0, 11, -3, 4711}) {
        BiquadFilter filter = designed(48000.0, static_cast<FilterType>(type), 500.0, 2.0, 6.0);
        const auto h = impulseResponse(filter, 4);
        EXPECT_EQ(h, (std::vector<double>{1.0, 0.0, 0.0, 0.0})) << type;
    }
}

TEST(BiquadFilter, LimitsOfItsSettersAndBadNumbers)
{
    BiquadFilter filter = designed(96000.0, FilterType::LowPass1, 100.0, 1.0);
    const double rates[][2] = {{19999.0, 44100.0},   {400001.0, 44100.0}, {20000.0, 20000.0},
                               {400000.0, 400000.0}, {kNan, 44100.0},     {-1.0, 44100.0}};
    for (const auto& [asked, used] : rates) {
        filter.setSampleRate(asked);
        EXPECT_EQ(filter.sampleRate, used);
        EXPECT_EQ(filter.rampLength, static_cast<unsigned>(used * 0.15 + 1e-6));  // 150 ms
    }
    filter.setSampleRate(96000.0);
    const double frequencies[][2] = {
        {1e9, 47904.0}, {0.0, 0.001}, {-5.0, 0.001}, {kNan, 0.001}, {47904.0, 47904.0}};
    for (const auto& [asked, used] : frequencies) {
        filter.setFrequency(asked);
        EXPECT_DOUBLE_EQ(filter.frequency, used);
    }
    filter.setQ(0.0);
    EXPECT_EQ(filter.q, 0.0001);
    filter.setQ(1e6);
    EXPECT_EQ(filter.q, 1000.0);

    filter.setFrequency(40000.0);
    filter.setSampleRate(44100.0);
    EXPECT_EQ(filter.frequency, 40000.0);  // not limited again by the new rate
    filter.b0 = 42.0;
    filter.setEnabled(1);  // no change: not redesigned
    EXPECT_EQ(filter.b0, 42.0);
}

// A first-order low-pass has the single pole p and the gain 1 - p. The glide interpolates both
// linearly, so the output is y = g[n] x + p[n] y.
TEST(BiquadFilter, AGlideInterpolatesPoleAndGainLinearlyFor150Milliseconds)
{
    const auto poleAt = [](double hz) {
        return std::exp(-2.0 * std::asinh(std::sin(kPi * hz / 20000.0)));
    };
    BiquadFilter filter = designed(20000.0, FilterType::LowPass1, 100.0, 1.0);
    filter.instant = false;
    filter.pole1Im.current = 1e-300;
    filter.setFrequency(4000.0);
    EXPECT_EQ(filter.pole1Im.step, 0.0) << "a denormal step";
    const int length = 3000;
    EXPECT_EQ(filter.rampCount, length);
    const double from = poleAt(100.0), to = poleAt(4000.0);
    double y = 0.0;
    for (int n = 1; n <= length + 10; ++n) {
        const double p = from + (to - from) * std::min(n, length) / length;
        const double x = std::sin(0.7 * n);
        y = (1.0 - p) * x + p * y;
        ASSERT_NEAR(filter.processSample(x), y, 1e-10) << n;
    }
    EXPECT_EQ(filter.rampCount, 0);
}

TEST(BiquadFilter, AGlideOfComplexPolesArrivesAtTheDesignAndAnyCallOfSetInstantEndsIt)
{
    BiquadFilter filter = designed(48000.0, FilterType::PeakingEq, 200.0, 1.5, 9.0);
    filter.instant = false;
    filter.setFrequency(6000.0);
    for (int n = 0; n < 7199; ++n)
        filter.processSample(0.0);
    EXPECT_EQ(filter.rampCount, 1);
    // With the state cleared, one sample shows the glide's last b0.
    filter.x1 = filter.x2 = filter.y1 = filter.y2 = 0.0;
    const BiquadFilter target = designed(48000.0, FilterType::PeakingEq, 6000.0, 1.5, 9.0);
    EXPECT_NEAR(filter.processSample(1.0), target.b0, 1e-9);

    filter.setFrequency(500.0);
    EXPECT_GT(filter.rampCount, 0);
    filter.setInstant(false);
    EXPECT_EQ(filter.rampCount, 0);
    EXPECT_EQ(filter.pole1Im.current, filter.pole1Im.target);
    EXPECT_EQ(filter.pole1Im.step, 0.0);

    filter.setEnabled(0);  // glides to off
    EXPECT_EQ(filter.rampCount, 7200);
    for (int n = 0; n < 7200; ++n)
        filter.processSample(0.5);
    EXPECT_EQ(filter.rampCount, 0);
    EXPECT_EQ(filter.processSample(0.125), 0.125);
    EXPECT_EQ(filter.x1, 0.0);
}

TEST(BiquadFilter, ADecayingFilterReachesExactZeroAndNeverADenormal)
{
    BiquadFilter fast = designed(48000.0, FilterType::LowPass1, 16000.0, 1.0);  // pole at 0.21
    fast.processSample(1.0);
    for (int n = 0; n < 1000; ++n)
        ASSERT_FALSE(isDenormal(fast.processSample(0.0))) << n;
    EXPECT_EQ(fast.y1, 0.0);
    EXPECT_EQ(fast.y2, 0.0);

    // With slower poles rounding may hold the last few units of the flush, near 1e-52.
    for (const FilterType type :
         {FilterType::LowPass1, FilterType::HighPass2, FilterType::BandPass}) {
        BiquadFilter filter = designed(48000.0, type, 4000.0, 0.8);
        filter.processSample(1.0);
        for (int n = 0; n < 20000; ++n)
            ASSERT_FALSE(isDenormal(filter.processSample(0.0))) << n;
        EXPECT_LT(std::fabs(filter.y1), 1e-50);
        EXPECT_FALSE(isDenormal(filter.y2));
    }
}

TEST(BiquadFilter, TheFlushSurvivesTheOptimiser)
{
    BiquadFilter wire = designed(48000.0, static_cast<FilterType>(99), 4000.0, 0.8);
    EXPECT_EQ(wire.processSample(1e-60), 0.0);
    EXPECT_NE(flushed(1e-50, 1e-36), 1e-50);
    EXPECT_EQ(wire.processSample(1e-50), flushed(1e-50, 1e-36));
}

}  // namespace
